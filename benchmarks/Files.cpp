#include "Bench.h"
#include "Process.h"

#include "globals/ConfigManager.h"

#include <QDir>
#include <QFile>

#include <filesystem>

using namespace TEKLUVA;
namespace fs = std::filesystem;

namespace {

struct Tree
{
    const char* name;
    int folders;
    int filesPerFolder;
    int fileSize;
};
constexpr Tree TREES[] = {{"10,000 small files", 100, 100, 1024}, {"8 files of 64 MiB", 1, 8, 64 << 20}};

QString place()
{
    return Bench::folder(QStringLiteral("files"));
}

QString sourceOf(const Tree& tree)
{
    return place() + QLatin1Char('/') + QString::fromLatin1(tree.name);
}

QString copyOf(const Tree& tree)
{
    return sourceOf(tree) + QStringLiteral(" copied");
}

void fillFolder(const QString& path, int files, const QByteArray& content)
{
    QDir().mkpath(path);
    for (int number = 0; number < files; ++number) {
        QFile file(path + QStringLiteral("/file-%1.dat").arg(number));
        Bench::require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(),
                       "there is no room for the files");
    }
}

void makeTree(const Tree& tree)
{
    if (QFile::exists(sourceOf(tree)))
        return;
    const QByteArray content = Bench::text(tree.fileSize);
    for (int folder = 0; folder < tree.folders; ++folder)
        fillFolder(sourceOf(tree) + QStringLiteral("/folder-%1").arg(folder), tree.filesPerFolder, content);
    // So that no side pays for the writing of the sources.
    Bench::require(Bench::run({"sync", "-f", place().toStdString()}).isDone, "the disk cannot be synced");
}

std::string nativeSource(const Tree& tree)
{
    return QFile::encodeName(sourceOf(tree)).toStdString();
}

std::string nativeCopy(const Tree& tree)
{
    return QFile::encodeName(copyOf(tree)).toStdString();
}

void prepareCopy(const Tree& tree)
{
    makeTree(tree);
    QDir(copyOf(tree)).removeRecursively();
}

void prepareRemoval(const Tree& tree)
{
    prepareCopy(tree);
    fs::copy(nativeSource(tree), nativeCopy(tree), fs::copy_options::recursive);
}

bool copyWithUs(const Tree& tree)
{
    QDir().mkpath(copyOf(tree));
    return ConfigManager::getInstance()->copyDirectory(sourceOf(tree), copyOf(tree), true, false, {});
}

bool copyWithCommand(const Tree& tree)
{
    return Bench::run({"cp", "-r", nativeSource(tree), nativeCopy(tree)}).isDone;
}

bool copyWithStandardLibrary(const Tree& tree)
{
    fs::copy(nativeSource(tree), nativeCopy(tree), fs::copy_options::recursive);
    return true;
}

bool sizeWithUs(const Tree& tree)
{
    return ConfigManager::getInstance()->getDirectoryContentSize(sourceOf(tree))
           == qint64(tree.folders) * tree.filesPerFolder * tree.fileSize;
}

bool sizeWithCommand(const Tree& tree)
{
    return Bench::run({"du", "-sb", nativeSource(tree)}).isDone;
}

bool sizeWithStandardLibrary(const Tree& tree)
{
    std::uintmax_t sum = 0;
    for (const auto& entry : fs::recursive_directory_iterator(nativeSource(tree))) {
        if (entry.is_regular_file())
            sum += entry.file_size();
    }
    return sum > 0;
}

bool removeWithUs(const Tree& tree)
{
    return ConfigManager::getInstance()->deleteDirectory(copyOf(tree));
}

bool removeWithCommand(const Tree& tree)
{
    return Bench::run({"rm", "-rf", nativeCopy(tree)}).isDone;
}

bool removeWithStandardLibrary(const Tree& tree)
{
    return fs::remove_all(nativeCopy(tree)) > 0;
}

struct Side
{
    const char* job;
    const char* name;
    void (*prepare)(const Tree& tree);
    bool (*work)(const Tree& tree);
};
constexpr Side SIDES[] = {
    {"copy files", "ours", &prepareCopy, &copyWithUs},
    {"copy files", "cp -r", &prepareCopy, &copyWithCommand},
    {"copy files", "std::filesystem", &prepareCopy, &copyWithStandardLibrary},
    {"size of files", "ours", &makeTree, &sizeWithUs},
    {"size of files", "du -sb", &makeTree, &sizeWithCommand},
    {"size of files", "std::filesystem", &makeTree, &sizeWithStandardLibrary},
    {"delete files", "ours", &prepareRemoval, &removeWithUs},
    {"delete files", "rm -rf", &prepareRemoval, &removeWithCommand},
    {"delete files", "std::filesystem", &prepareRemoval, &removeWithStandardLibrary},
};

void addSide(const Side& side, const Tree& tree)
{
    const std::string name = std::string(side.job) + "/" + tree.name + "/" + side.name;
    Bench::addSlow(
        name, [side, tree] { side.prepare(tree); }, [side, tree] { return side.work(tree); })
        ->Iterations(1);
}

} // namespace

void Bench::addFiles()
{
    for (const Tree& tree : TREES) {
        for (const Side& side : SIDES)
            addSide(side, tree);
    }
}
