#include "OtherPrograms.h"
#include "TestLog.h"

#include "examples/viewer/SettingsDialog.h"
#include "examples/viewer/ViewerWindow.h"

#include "globals/ConfigManager.h"
#include "globals/DataFileCreator.h"
#include "globals/MeasurementManager.h"
#include "globals/widgets/LogDock.h"
#include "globals/widgets/LogModel.h"
#include "globals/widgets/ProgressDialog.h"
#include "globals/widgets/UnitBox.h"

#include <QtWidgets>

using namespace TEKLUVA;

class ViewerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_config->clearSettings();
        m_config->setPrefferedLang("en"_q);
        speakPreferredLanguage();
        m_log = std::make_unique<TestLog::ActiveLog>();
        m_window = std::make_unique<ViewerWindow>("secret"_q);
        m_window->show();
        QVERIFY(DataFileCreator().createArchivFromData(
            {{"sofas"_q, "catalogue\nCorner sofa;250;90;80\nArmchair;80;85.5;100\n"},
             {"tables"_q, "catalogue\nDesk;160;80;72\nnonsense\nSofa table;90;60;45\n"}},
            m_file, "secret"_q));
    }
    void cleanup()
    {
        m_window.reset();
        m_log.reset();
    }

    void findsArticles()
    {
        m_window->open(m_file);
        QTRY_COMPARE(status(), "4 articles found."_q);
        find("SOFA"_q);
        QTRY_COMPARE(status(), "2 articles found."_q);
        QCOMPARE(rows(), QStringList({"sofas|Corner sofa|250 cm|90 cm|80 cm"_q,
                                      "tables|Sofa table|90 cm|60 cm|45 cm"_q}));
        find("arm"_q);
        QTRY_COMPARE(status(), "1 article found."_q);
        QVERIFY(!m_window->findChild<ProgressDialog*>()->isVisible());
    }

    void showsASearchBeforeTheNextOneBegins()
    {
        m_window->open(m_file);
        while (StateHandler::getInstance()->isProcessRunning())
            QThread::msleep(1);
        find("sofa"_q); // before the window has heard of the end
        QTRY_COMPARE(status(), "4 articles found."_q);
    }

    void tellsWhyACatalogueCannotBeRead_data() { TestData::addRows("catalogue-errors.txt"); }
    void tellsWhyACatalogueCannotBeRead()
    {
        m_window = std::make_unique<ViewerWindow>(TestData::field("password"));
        m_window->open(TestData::field("file"));
        QTRY_VERIFY2(status().contains(TestData::field("reason")), qPrintable(status()));
        QVERIFY(m_log->entries().last().startsWith("8192 "_q));
        QVERIFY(rows().isEmpty());
    }

    void settingsAreInForceAtOnce()
    {
        m_window->open(m_file);
        QTRY_COMPARE(rows().size(), 4);
        SettingsDialog dialog(m_window.get());
        QTest::keyClick(dialog.findChild<UnitBox*>(), Qt::Key_Down);
        QCOMPARE(rows()[0], "sofas|Corner sofa|2,5 m|0,9 m|0,8 m"_q);
        QTest::keyClick(dialog.findChild<QComboBox*>(), Qt::Key_Up); // the first one is that of the languages
        QTRY_COMPARE(m_window->windowTitle(), "Katalog"_q);
        QCOMPARE(m_window->findChild<QLineEdit*>()->accessibleName(), "Suchen"_q);
        QCOMPARE(m_window->centralWidget()->findChild<QTreeView*>()->accessibleName(), "Katalog"_q);
        QCOMPARE(dialog.windowTitle() + dialog.findChild<QLabel*>()->text(), "Einstellungen&Sprache"_q);
        find("desk"_q);
        QTRY_COMPARE(status(), "1 Artikel gefunden."_q);
    }

    void showsTheLog()
    {
        const auto* dock = m_window->findChild<LogDock*>();
        m_window->open(m_file);
        QTRY_COMPARE(dock->getModel()->rowCount(), 1);
        QCOMPARE(dock->getModel()->index(0, LogModel::E_LC_MESSAGE).data().toString(), "4 articles found."_q);
        QAction* toggle = m_window->findChildren<QMenu*>()[1]->actions()[0];
        QCOMPARE(toggle->text(), "Log"_q);
        toggle->trigger();
        QVERIFY(!dock->isVisible());
        toggle->trigger();
        QVERIFY(dock->isVisible());
    }

    void endsTheSearchOnRequest()
    {
        auto* states = StateHandler::getInstance();
        const auto connection = connect(states, &StateHandler::createNewProgressStepRequested, states,
                                        &StateHandler::setAbort, Qt::DirectConnection);
        m_window->open(m_file);
        QTRY_COMPARE(status(), "The search was aborted."_q);
        QCOMPARE(rows().size(), 2); // of the first entry, after which the search asks
        disconnect(connection);
        find("desk"_q);
        QTRY_COMPARE(status(), "1 article found."_q);
    }

    void leavesTheFoldersOfThePlannerAlone()
    {
        const QString data = TestPlatform::dataFolder() + QLatin1Char('/');
        const QString older = data + "Falbrin GmbH/Tekluva 3D-Planer/project"_q;
        QVERIFY(TestFiles::write(older, "1"));
        QProcess viewer;
        viewer.start(QStringLiteral(VIEWER), QStringList());
        QTRY_VERIFY(
            TestFiles::contentOf(data + "tekluva/tekluva Catalogue/settings.ini"_q).contains("started"));
        viewer.kill();
        QVERIFY(viewer.waitForFinished() && QFile::exists(older));
    }

    void endsTheSearchWhenTheWindowCloses()
    {
        m_window->open(m_file);
        m_window.reset();
        QVERIFY(StateHandler::getInstance()->wasAborted());
    }

    void findsTheSameWithoutAWindow()
    {
        qputenv("CATALOGUE_PASSWORD", "secret");
        const auto run = [this](const QString& text) {
            return OtherPrograms::run(QStringLiteral(CATALOGUE), {m_file, text});
        };
        QCOMPARE(run("arm"_q).output.trimmed(), QByteArray("sofas;Armchair;80;85.5;100"));
        QCOMPARE(run("bed"_q).exitCode, 1);
        qputenv("CATALOGUE_PASSWORD", "other");
        QVERIFY(run("arm"_q).errors.contains("the password is wrong"_q));
    }

private:
    void find(const QString& text)
    {
        auto* field = m_window->findChild<QLineEdit*>();
        field->setText(text);
        QTest::keyClick(field, Qt::Key_Return);
    }
    QString status() const { return m_window->statusBar()->findChild<QLabel*>()->text(); }
    QStringList rows() const
    {
        const QAbstractItemModel* model = m_window->findChild<QStandardItemModel*>();
        QStringList rows;
        for (int row = 0; row < model->rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < model->columnCount(); ++column)
                cells << model->index(row, column).data().toString();
            rows << cells.join("|"_q);
        }
        return rows;
    }

    ConfigManager* m_config = ConfigManager::getInstance();
    const QString m_file = "catalogue.dat"_q;
    std::unique_ptr<TestLog::ActiveLog> m_log;
    std::unique_ptr<ViewerWindow> m_window;
};

GLOBALS_TEST_MAIN(ViewerTest, QApplication)
#include "tst_viewer.moc"
