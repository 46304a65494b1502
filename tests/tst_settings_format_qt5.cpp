#include "SettingsValues.h"
#include "TestData.h"

#include "globals/Settings.h"

#include <algorithm>

using namespace TEKLUVA;
using SettingsValues::Random;
using SettingsValues::times;
using SettingsValues::writtenTo;

namespace {

/// Another one each time: QSettings remembers what it has read under a name.
QString newFile(const QByteArray& content = {})
{
    static int number = 0;
    QString name = "%1.ini"_q.arg(++number);
    if (!content.isEmpty() && !TestFiles::write(name, content))
        qFatal("cannot write %s", qPrintable(name));
    return name;
}

/// The file after QSettings has set one more value in it.
QByteArray afterQtWrites(const QString& file, const QVariantMap& values)
{
    QSettings settings(file, QSettings::IniFormat);
    for (auto value = values.begin(); value != values.end(); ++value)
        settings.setValue(value.key(), *value);
    settings.sync();
    return TestFiles::textOf(file);
}

} // namespace

class SettingsFormatTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// Those that the other tests hold against a file, so that it is QSettings' own.
    void qtWritesTheFileOfSamples()
    {
        QCOMPARE(afterQtWrites(newFile(), SettingsValues::samples()),
                 TestData::content("settings-samples.ini"));
    }

    void writesWhatQtWritesAndReadsIt()
    {
        SKIP_ON_WINDOWS("a QSettings that tells upper case from lower case");
        Random random(1);
        for (int map = 0; map < times(40); ++map) {
            QVariantMap values;
            for (int i = random.below(50) + 1; i > 0; --i)
                values.insert(random.key(), random.variant());
            const QString file = newFile();
            const QByteArray expected = afterQtWrites(newFile(), values);
            QCOMPARE(writtenTo(file, values), expected);
            const QSettings qt(newFile(expected), QSettings::IniFormat);
            const Settings ours(file, QSettings::IniFormat, nullptr);
            for (const QString& key : qt.allKeys())
                QCOMPARE(ours.getSetting(QString(), key), qt.value(key));
        }
    }

    /// What somebody has edited, or damaged, is read as QSettings reads it.
    void readsWhatQtReads()
    {
        SKIP_ON_WINDOWS("a QSettings that tells upper case from lower case");
        Random random(2);
        const QStringList pieces =
            QStringLiteral("[|]|[G]|[H]|=|=|=|;|,|\"|\\|\\x|\\n|\\8|\\101|\n|\n|\n|\r\n|\n\r| | "
                           "|\t|a|b|4|%|%4|%41|%U|%U0041|General|[General]|[%General]|ä|#|'|/|:|k=v|\nl=1")
                .split(QLatin1Char('|'));
        for (int file = 0; file < times(300); ++file) {
            QByteArray content;
            for (int i = random.below(30) + 1; i > 0; --i)
                content += random.oneOf(pieces).toUtf8();
            // Of these QSettings loses a separator, or the whole line at its next write.
            const QStringList keys = QSettings(newFile(content), QSettings::IniFormat).allKeys();
            if (std::any_of(keys.begin(), keys.end(),
                            [](const QString& key) { return key.startsWith("/"_q) || key.endsWith("/"_q); }))
                continue;
            const QVariantMap more = {{"N/n"_q, 1}};
            const QByteArray expected = afterQtWrites(newFile(content), more);
            if (writtenTo(newFile(content), more) != expected)
                QCOMPARE(content + " -> " + writtenTo(newFile(content), more), content + " -> " + expected);
        }
    }
};

GLOBALS_TEST_MAIN(SettingsFormatTest)
#include "tst_settings_format_qt5.moc"
