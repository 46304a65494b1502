#include "TestData.h"
#include "TestLog.h"
#include "TestPassword.h"

#include "globals/Exception.h"
#include "globals/PresetManager.h"

using namespace TEKLUVA;

namespace {

/// A fresh manager with the built-in values.
PresetManager& freshPresets()
{
    delete PresetManager::getInstance();
    PresetManager& presets = *PresetManager::getInstance();
    presets.fillNameMap();
    presets.setInitialPresets();
    return presets;
}

/// The preset of that name; a name that is none fails the row.
E_PresetValue keyOf(const QString& name)
{
    const E_PresetValue key = PresetManager::getInstance()->getKey(name);
    if (key == E_PV_NONE)
        TestData::refuse(name, "preset");
    return key;
}

QVariant preset(const QString& name)
{
    return PresetManager::getPreset(keyOf(name));
}

/// The number that \p bound, a key or a number itself, stands for.
double boundNumber(const QString& bound)
{
    bool isNumber = false;
    const double number = bound.toDouble(&isNumber);
    return isNumber ? number : preset(bound).toDouble();
}

/// What \p key is after \p number has been written to it in a fresh manager.
double numberAfter(const QString& key, double number)
{
    freshPresets().setPreset(key, number);
    return preset(key).toDouble();
}

/// The pairs of "key=value key=value" in a column of the current row.
QList<QPair<QString, QString>> pairs(const char* column)
{
    QList<QPair<QString, QString>> pairs;
    const auto parts = TestData::field(column).split(QLatin1Char(' '));
    for (const QString& part : parts)
        pairs << qMakePair(part.section(QLatin1Char('='), 0, 0), part.section(QLatin1Char('='), 1));
    return pairs;
}

QString presetFile()
{
    return QCoreApplication::applicationDirPath() + "/presets.dat"_q;
}

/// Reads the preset file with a fresh manager. Returns what was thrown: type, exit flag, description.
QString failureOfInit()
{
    delete PresetManager::getInstance();
    try {
        PresetManager::getInstance()->init();
    } catch (Exception& e) {
        return "%1 %2 "_q.arg(e.getExceptionType()).arg(e.exitApp()) + QString::fromUtf8(e.getDescription());
    }
    return QString();
}

} // namespace

class PresetsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QFile::remove(presetFile()); }

    void followsTheTable_data() { TestData::addRows("preset-table.txt"); }
    void followsTheTable()
    {
        const QString key = QString::fromLatin1(QTest::currentDataTag());
        const QString type = TestData::field("type");
        QCOMPARE(int(freshPresets().getKey(key)), TestData::field<int>("number"));
        QVariant expected = TestData::field("initial");
        TestTypes::convert(expected, type == "string"_q ? int(QMetaType::QString)
                                                        : TestTypes::numberOf(type.toLatin1()));
        QCOMPARE(preset(key).typeName(), expected.typeName());
        QCOMPARE(preset(key), expected);

        const QString rule = TestData::field("rule");
        const QString lower = TestData::field("lower");
        if (rule == "any"_q) {
            QCOMPARE(numberAfter(key, 1e9), 1e9);
            QCOMPARE(numberAfter(key, -1e9), -1e9);
        } else if (rule == "within"_q) {
            const double min = boundNumber(lower);
            const double max = boundNumber(TestData::field("upper"));
            QCOMPARE(numberAfter(key, (min + max) / 3), (min + max) / 3);
            QCOMPARE(numberAfter(key, min - 0.001), min);
            QCOMPARE(numberAfter(key, max + 0.001), max);
        } else if (rule == "minimum"_q || rule == "maximum"_q) {
            isOnlyNarrowed(key, lower, rule == "minimum"_q ? 0.1 : -0.1);
        } else {
            QCOMPARE(rule, "own"_q);
        }
    }

    void tableHereIsComplete()
    {
        const QByteArray rows = TestData::content("preset-table.txt");
        for (const PresetDescription& preset : PresetManager::describePresets())
            QVERIFY2(rows.contains("\n" + preset.key.toLatin1() + " "), qPrintable(preset.key));
    }

    void tellsWhatLimitsAPreset_data() { TestData::addRows("preset-bounds.txt"); }
    void tellsWhatLimitsAPreset()
    {
        const PresetBounds bounds = PresetManager::boundsOf(E_PresetValue(TestData::field<int>("preset")));
        const QString range = bounds.lower == E_PV_NONE ? "%1 to %2"_q.arg(bounds.min).arg(bounds.max)
                                                        : "#%1 to #%2"_q.arg(bounds.lower).arg(bounds.upper);
        QCOMPARE(range, TestData::field("range"));
        QCOMPARE("%1 %2"_q.arg(bounds.minimum).arg(bounds.maximum), TestData::field("others"));
    }

    void keepsPresetsConsistent_data() { TestData::addRows("preset-writes.txt"); }
    void keepsPresetsConsistent()
    {
        PresetManager& presets = freshPresets();
        for (const auto& write : pairs("written"))
            presets.setPreset(keyOf(write.first), write.second);
        for (const auto& result : pairs("expected"))
            QCOMPARE(result.first + QString::number(preset(result.first).toDouble()),
                     result.first + result.second);
    }

    void boundsWrittenByHandTakeOthersWithThem()
    {
        PresetManager& presets = freshPresets();
        presets.setMinBound(E_PV_MIN_WALL_STRENGTH, 30, E_PV_NONE, E_PV_WALL_STRENGTH);
        QCOMPARE(PresetManager::getPreset(E_PV_WALL_STRENGTH), QVariant(30));
        presets.setMaxBound(E_PV_MAX_WALL_STRENGTH, 25, E_PV_NONE, E_PV_WALL_STRENGTH);
        QCOMPARE(PresetManager::getPreset(E_PV_WALL_STRENGTH), QVariant(25));
        presets.setValue(E_PV_SAT_NAV_Z, 9000.0);
        presets.setPreset(E_PV_MAX_CUBE_Y, 1999.0); // beside the room, so fitted along z
        QCOMPARE(PresetManager::getPreset(E_PV_SAT_NAV_Z), QVariant(2000.0));
    }

    void writesWithoutDefaults()
    {
        delete PresetManager::getInstance();
        for (const E_PresetValue key :
             {E_PV_SAT_NAV_Y, E_PV_ROOM_HEIGHT, E_PV_MAX_ROOM_HEIGHT, E_PV_MAX_CUBE_X}) {
            QVERIFY(!PresetManager::hasPreset(key));
            PresetManager::getInstance()->setPreset(key, -7);
            QCOMPARE(PresetManager::getPreset(key), QVariant(-7));
        }
        QVERIFY(!PresetManager::hasPreset(E_PV_MAX_CUBE_Y) && !PresetManager::hasPreset(E_PV_MIN_CUBE_X));
    }

    void keepsTypesAsGiven_data() { TestData::addRows("preset-types.txt"); }
    void keepsTypesAsGiven()
    {
        PresetManager& presets = freshPresets();
        QVariant value = TestData::field("value");
        QVERIFY(TestTypes::convert(value, TestTypes::numberOf(TestData::field("type").toLatin1())));
        presets.setPreset(keyOf(TestData::field("key")), value);
        QCOMPARE(preset(TestData::field("looked")).typeName(),
                 TestData::field("stored").toLatin1().constData());
    }

    void checksAspectRatios_data() { TestData::addRows("preset-ratios.txt"); }
    void checksAspectRatios()
    {
        const QString ratio =
            QString::fromUtf8(QByteArray::fromPercentEncoding(TestData::field("ratio").toUtf8()));
        const QString form = " has the wrong format. Please use <max 3 digit number>:<max 3 digit number>"_q;
        const QMap<QString, QString> forms = {
            {"preview"_q, "preview_image_aspect_ratio"_q + form},
            {"screenshot"_q,
             "screenshot_aspect_ratio"_q + form
                 + " to specify a aspect ratio or 0 to take the current screen aspect ratio"_q}};
        for (const QString& which : forms.keys()) {
            const TestHome::Turn turn(which);
            const QString key = forms[which].section(QLatin1Char(' '), 0, 0);
            const bool isGood = TestData::field<bool>(which.toLatin1().constData());
            TestLog::ActiveLog log;
            freshPresets().setPreset(keyOf(key), ratio);
            QCOMPARE(preset(key).toString(), isGood ? ratio : "4:3"_q);
            const auto warning = "4096 Preset value: %1 for Preset: %2"_q.arg(ratio, forms[which]);
            QCOMPARE(log.entries(), isGood ? QStringList() : QStringList(warning));
        }
    }

    void returnsTheFallbackSlot()
    {
        delete PresetManager::getInstance();
        const QVariant* fallback = &PresetManager::getPreset(E_PV_FALLBACK);
        QVERIFY(!fallback->isValid() && !PresetManager::hasPreset(E_PV_ROOM_HEIGHT));
        QCOMPARE(&PresetManager::getPreset(E_PV_ROOM_HEIGHT), fallback);
        freshPresets();
        QVERIFY(PresetManager::hasPreset(E_PV_FALLBACK));
        const auto beyond = E_PresetValue(PresetManager::describePresets().last().value + 1);
        for (const auto none : {E_PresetValue(-1), E_PV_NONE, beyond}) {
            const TestHome::Turn turn(none);
            PresetManager::getInstance()->setPreset(none, 1);
            QVERIFY(!PresetManager::hasPreset(none) && !PresetManager::getPreset(none).isValid());
        }
    }

    void readsTheFile_data() { TestData::addRows("preset-files.txt"); }
    void readsTheFile()
    {
        if (qstrcmp(GLOBALS_PRESET_PASSWORD, "globals-demo-presets") != 0)
            QSKIP("the preset files of the tests are made for the default password");
        const QString failure = TestData::field("failure");
        QVERIFY(QFile::copy(TestData::path("presets-%1.dat"_q.arg(TestData::field("file"))), presetFile()));
        TestLog::ActiveLog log;
        const QString thrown = failureOfInit();
        QCOMPARE(thrown.mid(4).left(failure.size()), failure);
        QCOMPARE(thrown.left(4), failure.isEmpty() ? QString() : "2 1 "_q);
        for (const auto& result : pairs("expected"))
            QCOMPARE(preset(result.first).toString(), result.second);
        QCOMPARE(log.entries().size(), TestData::field("file") == "nothing"_q ? 1 : 0);
        QCOMPARE(PresetManager::getInstance()->isFromFile(), TestData::field("file") == "good"_q);
    }

    void reportsAMissingFileAndAnArchive()
    {
        QCOMPARE(failureOfInit(), "3 1 File %1 is missing"_q.arg(presetFile()));
        QCOMPARE(preset("room_height"_q), QVariant(270.0));
        QVERIFY(QFile::copy(TestData::path("small.zip"_q), presetFile()));
        QCOMPARE(failureOfInit(),
                 "2 1 File %1 is an archive but single file was expected"_q.arg(presetFile()));
    }

    void libraryDoesNotHoldThePasswordWhole()
    {
        const QByteArray library = TestFiles::contentOf(QStringLiteral(GLOBALS_LIBRARY));
        const QString password = QStringLiteral(GLOBALS_PRESET_PASSWORD);
        const auto* wide = reinterpret_cast<const char*>(password.utf16());
        QVERIFY(library.size() > 10000 && !library.contains(password.toLatin1()));
        QVERIFY(!library.contains(QByteArray(wide, 2 * password.size())));
    }

private:
    /// A bound moves by \p narrower only, and takes its \p partner, if it has one, with it.
    static void isOnlyNarrowed(const QString& key, const QString& partner, double narrower)
    {
        const double start = preset(key).toDouble();
        QCOMPARE(numberAfter(key, start - narrower), start);
        QCOMPARE(numberAfter(key, start + narrower), start + narrower);
        if (partner.isEmpty())
            return;
        const double beyond = preset(partner).toDouble() + narrower;
        QCOMPARE(numberAfter(key, beyond), beyond);
        QCOMPARE(preset(partner).toDouble(), beyond);
    }
};

GLOBALS_TEST_MAIN(PresetsTest)
#include "tst_presets.moc"
