// The library beside its peers, in one process. scripts/bench runs it and makes docs/benchmarks.md of its
// output.

#include "Bench.h"

#include "globals/ConfigManager.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

namespace {

const QString& home()
{
    static const QTemporaryDir folder;
    static const QString path = folder.path();
    return path;
}

void moveHome()
{
    qputenv("HOME", QFile::encodeName(home()));
    for (const char* variable : {"XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_DIRS"})
        qunsetenv(variable);
}

} // namespace

QString Bench::folder(const QString& name)
{
    QDir(home()).mkpath(name);
    return home() + QLatin1Char('/') + name;
}

void Bench::require(bool holds, const char* what)
{
    if (holds)
        return;
    static_cast<void>(std::fprintf(stderr, "Cannot go on: %s\n", what));
    std::_Exit(EXIT_FAILURE);
}

QByteArray Bench::text(int size)
{
    constexpr unsigned FIRST = 'a';
    constexpr unsigned LETTERS = 26;
    QByteArray text(size, ' ');
    unsigned random = 1;
    for (char& letter : text) {
        random = random * 1664525 + 1013904223;
        letter = static_cast<char>(FIRST + (random >> 16) % LETTERS);
    }
    return text;
}

int main(int argc, char** argv)
{
    moveHome();
    QCoreApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("tekluva"));
    QCoreApplication::setApplicationName(QStringLiteral("tekluva 3D-Planner"));
    TEKLUVA::ConfigManager::getInstance();

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return EXIT_FAILURE;
    benchmark::AddCustomContext("compiler", __VERSION__);
    benchmark::AddCustomContext("versions", VERSIONS);
    for (const auto add :
         {&Bench::addDataFiles, &Bench::addArchives, &Bench::addExtraction, &Bench::addLogs,
          &Bench::addSettingsAccess, &Bench::addMeasurement, &Bench::addPresets, &Bench::addColourTemperature,
          &Bench::addFiles, &Bench::addProgress, &Bench::addStartup})
        add();
    benchmark::RunSpecifiedBenchmarks();
    return EXIT_SUCCESS;
}
