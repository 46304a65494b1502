#include "SettingsDialog.h"

#include "globals/ConfigManager.h"
#include "globals/Translations.h"
#include "globals/widgets/UnitBox.h"

#include <QtWidgets>

using namespace TEKLUVA;

SettingsDialog::SettingsDialog(QWidget* parent)
    : QDialog(parent)
    , m_form(new QFormLayout(this))
{
    auto* languages = new QComboBox;
    languages->addItem(QStringLiteral("Deutsch"), QStringLiteral("de"));
    languages->addItem(QStringLiteral("English"), QStringLiteral("en"));
    languages->setCurrentIndex(languages->findData(ConfigManager::getInstance()->getPrefferedLang()));
    connect(languages, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [languages] {
        ConfigManager::getInstance()->setPrefferedLang(languages->currentData().toString());
        speakPreferredLanguage();
    });
    auto* buttons = new QDialogButtonBox;
    m_close = buttons->addButton(QString(), QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_form->addRow(QStringLiteral("language"), languages);
    m_form->addRow(QStringLiteral("unit"), new UnitBox(E_UU_ARRANGEMENT));
    m_form->addRow(buttons);
    setTexts();
}

void SettingsDialog::setTexts()
{
    const auto setLabel = [this](int row, const QString& text) {
        static_cast<QLabel*>(m_form->itemAt(row, QFormLayout::LabelRole)->widget())->setText(text);
    };
    setWindowTitle(tr("Settings"));
    setLabel(0, tr("&Language"));
    setLabel(1, tr("&Unit"));
    m_close->setText(tr("&Close"));
}

void SettingsDialog::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        setTexts();
    QDialog::changeEvent(event);
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
