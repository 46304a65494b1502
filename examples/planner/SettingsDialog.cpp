#include "SettingsDialog.h"

#include "Texts.h"

#include "globals/ConfigManager.h"
#include "globals/widgets/UnitBox.h"

#include <QtWidgets>

using namespace TEKLUVA;

namespace {

QComboBox* makeLanguages()
{
    ConfigManager* config = ConfigManager::getInstance();
    auto* box = new QComboBox;
    box->addItem(QStringLiteral("Deutsch"), QStringLiteral("de"));
    box->addItem(QStringLiteral("English"), QStringLiteral("en"));
    box->setCurrentIndex(box->findData(config->getPrefferedLang()));
    QObject::connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), config, [config, box] {
        config->setPrefferedLang(box->currentData().toString());
        Texts::getInstance()->speakPreferredLanguage();
    });
    return box;
}

} // namespace

QDialog* makeSettingsDialog(QWidget* parent)
{
    auto* dialog = translated(new QDialog(parent), QT_TRANSLATE_NOOP("Texts", "Settings"), "windowTitle");
    auto* form = new QFormLayout(dialog);
    const std::pair<const char*, QWidget*> rows[] = {
        {QT_TRANSLATE_NOOP("Texts", "&Language"), makeLanguages()},
        {QT_TRANSLATE_NOOP("Texts", "Unit for &constructing"), new UnitBox(E_UU_CONSTRUCTION)},
        {QT_TRANSLATE_NOOP("Texts", "Unit for &arranging"), new UnitBox(E_UU_ARRANGEMENT)},
    };
    for (const auto& [text, field] : rows)
        form->addRow(makeLabel(text, field), field);
    auto* buttons = new QDialogButtonBox;
    translated(buttons->addButton(QString(), QDialogButtonBox::RejectRole),
               QT_TRANSLATE_NOOP("Texts", "Clos&e"));
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    form->addRow(buttons);
    return dialog;
}
