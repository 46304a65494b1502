#include "SettingsDialog.h"

#include "globals/ConfigManager.h"
#include "globals/Translations.h"
#include "globals/widgets/UnitBox.h"

#include <QtWidgets>

using namespace TEKLUVA;

SettingsDialog::SettingsDialog(QWidget* parent)
    : QDialog(parent)
{
    auto* languages = new QComboBox;
    languages->addItem(QStringLiteral("Deutsch"), QStringLiteral("de"));
    languages->addItem(QStringLiteral("English"), QStringLiteral("en"));
    languages->setCurrentIndex(languages->findData(ConfigManager::getInstance()->getPrefferedLang()));
    connect(languages, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [languages] {
        ConfigManager::getInstance()->setPrefferedLang(languages->currentData().toString());
        speakPreferredLanguage();
    });
    auto* close = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::reject);
    setWindowTitle(tr("Settings"));
    auto* form = new QFormLayout(this);
    form->addRow(tr("&Language"), languages);
    form->addRow(tr("&Unit"), new UnitBox(E_UU_ARRANGEMENT));
    form->addRow(close);
}

void speakPreferredLanguage()
{
    static QPointer<QTranslator> texts; // belongs to the application object
    const QString language = ConfigManager::getInstance()->getPrefferedLang();
    QLocale::setDefault(QLocale(language));
    delete texts;
    texts = new QTranslator(qApp);
    if (texts->load(QStringLiteral(":/viewer/viewer_%1.qm").arg(language)))
        QCoreApplication::installTranslator(texts);
    showLanguage(language);
}
