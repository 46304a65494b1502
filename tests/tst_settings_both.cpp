#include "OtherPrograms.h"
#include "SettingsValues.h"
#include "otherqt/Described.h"

using namespace TEKLUVA;

namespace {

const QString FILE_NAME = QStringLiteral("both.ini");

/// What another process prints that reads, and writes, settings files with QSettings of the other Qt.
QByteArray otherQt(const QStringList& arguments)
{
    return OtherPrograms::outputOf(QStringLiteral(OTHER_QT_PROGRAM), arguments);
}

} // namespace

/// One settings file for the library with Qt 5 and with Qt 6.
class SettingsBothTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theOtherQtReadsWhatWeWrite()
    {
        if (QStringLiteral(OTHER_QT_PROGRAM).isEmpty())
            QSKIP("There is one Qt on this machine.");
        SettingsValues::Random random(3);
        for (int map = 0; map < SettingsValues::times(20); ++map) {
            const TestHome::Turn turn(map);
            QVariantMap values = SettingsValues::samples();
            for (int i = random.below(50); i > 0; --i)
                values.insert(random.key(), random.variant());
            QFile::remove(FILE_NAME);
            SettingsValues::writtenTo(FILE_NAME, values);
            const Settings ours(FILE_NAME, QSettings::IniFormat, nullptr);
            QByteArray lines;
            QVariantMap read;
            for (auto value = values.begin(); value != values.end(); ++value) {
                read.insert(value.key(), ours.getSetting(QString(), value.key()));
                lines += described(value.key(), read[value.key()]);
            }
            QCOMPARE(otherQt({"list"_q, FILE_NAME}), lines);
            // Qt 6 itself writes another file, which Qt 5 cannot read. What is read may be less than what was
            // written: a time in a list loses its offset.
            if (OTHER_QT == 5) {
                QFile::remove("copy.ini"_q);
                QFile::remove("again.ini"_q);
                QCOMPARE(otherQt({"copy"_q, FILE_NAME, "copy.ini"_q}), QByteArray());
                QCOMPARE(TestFiles::contentOf("copy.ini"_q), SettingsValues::writtenTo("again.ini"_q, read));
            }
        }
    }
};

GLOBALS_TEST_MAIN(SettingsBothTest)
#include "tst_settings_both.moc"
