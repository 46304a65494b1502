#include "globals/presets/PresetPassword_p.h"

#include "globals/presets/PresetPasswordPieces.h"

namespace TEKLUVA {

QString presetPassword()
{
    QString password;
    for (int i = 0; i < PRESET_PASSWORD_LENGTH; ++i)
        password.append(
            QLatin1String(PRESET_PASSWORD_PIECES[i * PRESET_PASSWORD_STRIDE % PRESET_PASSWORD_LENGTH]));
    return password;
}

} // namespace TEKLUVA
