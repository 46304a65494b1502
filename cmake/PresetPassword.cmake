# Cuts GLOBALS_PRESET_PASSWORD into one-character pieces for the library to put together at run time.
#
# The pieces lie in the library in steps of the stride, so that they do not spell the password where they stand:
# the character at position i is piece number i * stride modulo the length. The stride shares no factor with the
# length, so each piece is used once.

set(GLOBALS_PRESET_PASSWORD_LENGTH 20)
set(GLOBALS_PRESET_PASSWORD_STRIDE 7)

if(NOT GLOBALS_PRESET_PASSWORD MATCHES "^[ -~]*$")
    message(FATAL_ERROR "GLOBALS_PRESET_PASSWORD may hold printable ASCII characters only.")
endif()
string(LENGTH "${GLOBALS_PRESET_PASSWORD}" length)
if(NOT length EQUAL GLOBALS_PRESET_PASSWORD_LENGTH)
    message(FATAL_ERROR "GLOBALS_PRESET_PASSWORD must have exactly ${GLOBALS_PRESET_PASSWORD_LENGTH} "
        "characters, but has ${length}.")
endif()

math(EXPR last "${GLOBALS_PRESET_PASSWORD_LENGTH} - 1")
foreach(position RANGE ${last})
    math(EXPR place "${position} * ${GLOBALS_PRESET_PASSWORD_STRIDE} % ${GLOBALS_PRESET_PASSWORD_LENGTH}")
    string(SUBSTRING "${GLOBALS_PRESET_PASSWORD}" ${position} 1 character)
    string(REGEX REPLACE "([\\\\\"])" "\\\\\\1" escaped "${character}")
    set(piece_${place} "${escaped}")
endforeach()
set(GLOBALS_PRESET_PASSWORD_PIECES "")
foreach(place RANGE ${last})
    string(APPEND GLOBALS_PRESET_PASSWORD_PIECES "    \"${piece_${place}}\",\n")
endforeach()

configure_file(globals/presets/PresetPasswordPieces.h.in generated/globals/presets/PresetPasswordPieces.h @ONLY)
