#include "globals/presets/PresetTable_p.h"

#include "globals/presets/PresetRules_p.h"

#include <array>
#include <iterator>

namespace TEKLUVA {

namespace {

constexpr NavigationValues ALONG_X = {E_PV_PERS_NAV_X, E_PV_FLIGHT_NAV_X, E_PV_SAT_NAV_X};
constexpr NavigationValues ALONG_Y = {E_PV_PERS_NAV_Y, E_PV_FLIGHT_NAV_Y, E_PV_SAT_NAV_Y};
constexpr NavigationValues ALONG_Z = {E_PV_PERS_NAV_Z, E_PV_FLIGHT_NAV_Z, E_PV_SAT_NAV_Z};

constexpr PresetConstraint unchecked()
{
    return {&PresetRules::storeUnchecked, "any value"};
}

constexpr PresetConstraint clampToPresets(E_PresetValue lower, E_PresetValue upper)
{
    return {&PresetRules::clampToPresets, "%lower to %upper", PresetLimit::Presets, lower, upper};
}

constexpr PresetConstraint clampToNumbers(double min, double max)
{
    PresetConstraint constraint = {&PresetRules::clampToNumbers, "%lower to %upper", PresetLimit::Numbers};
    constraint.min = min;
    constraint.max = max;
    return constraint;
}

/// A minimum without a maximum.
constexpr PresetConstraint minimum()
{
    return {&PresetRules::raiseMinimum, "only raised", PresetLimit::Minimum};
}

constexpr PresetConstraint minimumBelow(E_PresetValue maximum, const NavigationValues& dependents = {})
{
    PresetConstraint constraint = {&PresetRules::raiseMinimum, "only raised, lifts %upper with it",
                                   PresetLimit::Minimum};
    constraint.upper = maximum;
    constraint.dependents = dependents;
    return constraint;
}

constexpr PresetConstraint maximumAbove(E_PresetValue minimum, const NavigationValues& dependents = {})
{
    PresetConstraint constraint = {&PresetRules::lowerMaximum, "only lowered, takes %lower down with it",
                                   PresetLimit::Maximum};
    constraint.lower = minimum;
    constraint.dependents = dependents;
    return constraint;
}

constexpr PresetConstraint maxRoomHeight()
{
    return {&PresetRules::setMaxRoomHeight,
            "only lowered; more than max_cube_y or sat_nav_y + 50: lifts that one to 50 above it",
            PresetLimit::Maximum};
}

constexpr PresetConstraint maxCubeY(E_PresetValue minimum, const NavigationValues& dependents)
{
    PresetConstraint constraint = maximumAbove(minimum, dependents);
    constraint.rule = &PresetRules::setMaxCubeY;
    constraint.words =
        "only lowered, takes %lower down with it; less than max_room_height + 50: min_cube_z instead";
    return constraint;
}

constexpr PresetConstraint satNavY(E_PresetValue lower, E_PresetValue upper)
{
    return {&PresetRules::setSatNavY, "%lower to %upper; less than max_room_height + 50 is ignored",
            PresetLimit::Presets, lower, upper};
}

constexpr PresetConstraint aspectRatio()
{
    return {&PresetRules::storeAspectRatio, "WIDTH:HEIGHT, 1 to 3 digits each"};
}

constexpr PresetConstraint aspectRatioOrScreen()
{
    return {&PresetRules::storeAspectRatioOrScreen,
            "WIDTH:HEIGHT, 1 to 3 digits each, or 0 for the screen's"};
}

// A row per preset. The maximum of env_min_sun_specular_temperatur is the diffuse one, not the specular one:
// that is meant.
// clang-format off
constexpr PresetRow PRESETS[] = {
    {E_PV_MAX_ROOM_HEIGHT, "max_room_height", 2000.0, maxRoomHeight()},
    {E_PV_MIN_ROOM_HEIGHT, "min_room_height", 100.0, minimum()},
    {E_PV_ROOM_HEIGHT, "room_height", 270.0, clampToPresets(E_PV_MIN_ROOM_HEIGHT, E_PV_MAX_ROOM_HEIGHT)},
    {E_PV_MIN_CONSTRUCTION_X, "min_construction_x", -1500, minimumBelow(E_PV_MAX_CONSTRUCTION_X)},
    {E_PV_MAX_CONSTRUCTION_X, "max_construction_x", 1500, maximumAbove(E_PV_MIN_CONSTRUCTION_X)},
    {E_PV_MIN_CONSTRUCTION_Y, "min_construction_y", -1500, minimumBelow(E_PV_MAX_CONSTRUCTION_Y)},
    {E_PV_MAX_CONSTRUCTION_Y, "max_construction_y", 1500, maximumAbove(E_PV_MIN_CONSTRUCTION_Y)},
    {E_PV_MIN_WALL_LENGTH, "min_wall_length", 5, minimum()},
    {E_PV_MIN_WALL_STRENGTH, "min_wall_strength", 0.2, minimumBelow(E_PV_MAX_WALL_STRENGTH)},
    {E_PV_MAX_WALL_STRENGTH, "max_wall_strength", 100.0, maximumAbove(E_PV_MIN_WALL_STRENGTH)},
    {E_PV_WALL_STRENGTH, "wall_strength", 20.0, clampToPresets(E_PV_MIN_WALL_STRENGTH, E_PV_MAX_WALL_STRENGTH)},
    {E_PV_MIN_ENDSTRIP_HEIGHT, "min_endstrip_height", 1.0, minimumBelow(E_PV_MAX_ENDSTRIP_HEIGHT)},
    {E_PV_MAX_ENDSTRIP_HEIGHT, "max_endstrip_height", 50.0, maximumAbove(E_PV_MIN_ENDSTRIP_HEIGHT)},
    {E_PV_ENDSTRIP_HEIGHT, "endstrip_height", 15.0, clampToPresets(E_PV_MIN_ENDSTRIP_HEIGHT, E_PV_MAX_ENDSTRIP_HEIGHT)},
    {E_PV_MIN_ENDSTRIP_STRENGTH, "min_endstrip_strength", 0.1, minimumBelow(E_PV_MAX_ENDSTRIP_STRENGTH)},
    {E_PV_MAX_ENDSTRIP_STRENGTH, "max_endstrip_strength", 50.0, maximumAbove(E_PV_MIN_ENDSTRIP_STRENGTH)},
    {E_PV_ENDSTRIP_STRENGTH, "endstrip_strength", 1.0, clampToPresets(E_PV_MIN_ENDSTRIP_STRENGTH, E_PV_MAX_ENDSTRIP_STRENGTH)},
    {E_PV_SHOW_ENDSTRIPS, "show_endstrips", true, unchecked()},
    {E_PV_SHOW_TOP_PLANES, "show_top_planes", true, unchecked()},
    {E_PV_MIN_CUBE_X, "min_cube_x", -2000.0, minimumBelow(E_PV_MAX_CUBE_X, ALONG_X)},
    {E_PV_MIN_CUBE_Y, "min_cube_y", 7.0, minimumBelow(E_PV_MAX_CUBE_Y, ALONG_Y)},
    {E_PV_MIN_CUBE_Z, "min_cube_z", -2000.0, minimumBelow(E_PV_MAX_CUBE_Z, ALONG_Z)},
    {E_PV_MAX_CUBE_X, "max_cube_x", 2000.0, maximumAbove(E_PV_MIN_CUBE_X, ALONG_X)},
    {E_PV_MAX_CUBE_Y, "max_cube_y", 2000.0, maxCubeY(E_PV_MIN_CUBE_Y, ALONG_Y)},
    {E_PV_MAX_CUBE_Z, "max_cube_z", 2000.0, maximumAbove(E_PV_MIN_CUBE_Z, ALONG_Z)},
    {E_PV_PERS_MOUSE_SENSITY, "pers_mouse_sensity", 0.1, clampToNumbers(0.01, 2)},
    {E_PV_PERS_WHEEL_SENSITY, "pers_wheel_sensity", 0.1, clampToNumbers(0.01, 2)},
    {E_PV_PERS_MOVING_STEP, "pers_moving_step", 5.0, clampToNumbers(0.01, 1000)},
    {E_PV_PERS_MOVING_TIMER_PERIOD, "pers_moving_timer_period", 25.0, clampToNumbers(1, 1000000)},
    {E_PV_PERS_TURNING_STEP, "pers_turning_step", 1.0, clampToNumbers(0.01, 1000)},
    {E_PV_PERS_TURNING_TIMER_PERIOD, "pers_turning_timer_period", 25.0, clampToNumbers(1, 1000000)},
    {E_PV_FLIGHT_MOUSE_SENSITY, "flight_mouse_sensity", 0.1, clampToNumbers(0.01, 2)},
    {E_PV_FLIGHT_WHEEL_SENSITY, "flight_wheel_sensity", 0.1, clampToNumbers(0.01, 2)},
    {E_PV_FLIGHT_MOVING_STEP, "flight_moving_step", 5.0, clampToNumbers(0.01, 1000)},
    {E_PV_FLIGHT_MOVING_TIMER_PERIOD, "flight_moving_timer_period", 25.0, clampToNumbers(1, 1000000)},
    {E_PV_FLIGHT_TURNING_STEP, "flight_turning_step", 1.0, clampToNumbers(0.01, 1000)},
    {E_PV_FLIGHT_TURNING_TIMER_PERIOD, "flight_turning_timer_period", 25.0, clampToNumbers(1, 1000000)},
    {E_PV_SAT_MOUSE_SENSITY, "sat_mouse_sensity", 0.1, clampToNumbers(0.01, 2)},
    {E_PV_SAT_WHEEL_SENSITY, "sat_wheel_sensity", 0.1, clampToNumbers(0.01, 2)},
    {E_PV_SAT_MOVING_STEP, "sat_moving_step", 5.0, clampToNumbers(0.01, 1000)},
    {E_PV_SAT_MOVING_TIMER_PERIOD, "sat_moving_timer_period", 25.0, clampToNumbers(1, 1000000)},
    {E_PV_SAT_TURNING_STEP, "sat_turning_step", 1.0, clampToNumbers(0.01, 1000)},
    {E_PV_SAT_TURNING_TIMER_PERIOD, "sat_turning_timer_period", 25.0, clampToNumbers(1, 1000000)},
    {E_PV_SAT_MAGNIFY_WHEEL_STEP, "sat_magnify_wheel_step", 0.005, clampToNumbers(0, 1)},
    {E_PV_SAT_MAGNIFY_KEY_STEP, "sat_magnify_key_step", 0.5, clampToNumbers(0, 1)},
    {E_PV_SAT_MAGNIFY_WHEEL_RAPID_FACTOR, "sat_magnify_wheel_rapid_factor", 4.5, clampToNumbers(1, 10)},
    {E_PV_SAT_MAGNIFY_KEY_RAPID_FACTOR, "sat_magnify_key_rapid_factor", 3.0, clampToNumbers(1, 10)},
    {E_PV_PERS_NAV_X, "pers_nav_x", -550.0, clampToPresets(E_PV_MIN_CUBE_X, E_PV_MAX_CUBE_X)},
    {E_PV_PERS_NAV_Y, "pers_nav_y", 170.0, clampToPresets(E_PV_MIN_CUBE_Y, E_PV_MAX_CUBE_Y)},
    {E_PV_PERS_NAV_Z, "pers_nav_z", -550.0, clampToPresets(E_PV_MIN_CUBE_Z, E_PV_MAX_CUBE_Z)},
    {E_PV_PERS_NAV_PITCH, "pers_nav_pitch", 5.0, unchecked()},
    {E_PV_PERS_NAV_YAW, "pers_nav_yaw", 135.0, unchecked()},
    {E_PV_PERS_NAV_LOCKED, "pers_nav_locked", false, unchecked()},
    {E_PV_PERS_NAV_FOV_MIN, "pers_nav_fov_min", 20.0, unchecked()},
    {E_PV_PERS_NAV_FOV_MAX, "pers_nav_fov_max", 120.0, unchecked()},
    {E_PV_PERS_NAV_FOV, "pers_nav_fov", 45.0, clampToPresets(E_PV_PERS_NAV_FOV_MIN, E_PV_PERS_NAV_FOV_MAX)},
    {E_PV_FLIGHT_NAV_X, "flight_nav_x", -550.0, clampToPresets(E_PV_MIN_CUBE_X, E_PV_MAX_CUBE_X)},
    {E_PV_FLIGHT_NAV_Y, "flight_nav_y", 550.0, clampToPresets(E_PV_MIN_CUBE_Y, E_PV_MAX_CUBE_Y)},
    {E_PV_FLIGHT_NAV_Z, "flight_nav_z", -550.0, clampToPresets(E_PV_MIN_CUBE_Z, E_PV_MAX_CUBE_Z)},
    {E_PV_FLIGHT_NAV_PITCH, "flight_nav_pitch", 5.0, clampToNumbers(-90, 90)},
    {E_PV_FLIGHT_NAV_YAW, "flight_nav_yaw", 135.0, unchecked()},
    {E_PV_FLIGHT_NAV_LOCKED, "flight_nav_locked", false, unchecked()},
    {E_PV_FLIGHT_NAV_FOV_MIN, "flight_nav_fov_min", 20.0, unchecked()},
    {E_PV_FLIGHT_NAV_FOV_MAX, "flight_nav_fov_max", 120.0, unchecked()},
    {E_PV_FLIGHT_NAV_FOV, "flight_nav_fov", 45.0, clampToPresets(E_PV_FLIGHT_NAV_FOV_MIN, E_PV_FLIGHT_NAV_FOV_MAX)},
    {E_PV_SAT_NAV_X, "sat_nav_x", 0.0, clampToPresets(E_PV_MIN_CUBE_X, E_PV_MAX_CUBE_X)},
    {E_PV_SAT_NAV_Y, "sat_nav_y", &PresetRules::roomHeightWithClearance, satNavY(E_PV_MIN_CUBE_Y, E_PV_MAX_CUBE_Y)},
    {E_PV_SAT_NAV_Z, "sat_nav_z", 0.0, clampToPresets(E_PV_MIN_CUBE_Z, E_PV_MAX_CUBE_Z)},
    {E_PV_SAT_NAV_PITCH, "sat_nav_pitch", 0.0, clampToNumbers(-90, 90)},
    {E_PV_SAT_NAV_YAW, "sat_nav_yaw", 0.0, unchecked()},
    {E_PV_SAT_NAV_LOCKED, "sat_nav_locked", false, unchecked()},
    {E_PV_SAT_NAV_WIDTH_MIN, "sat_nav_width_min", 10.0, unchecked()},
    {E_PV_SAT_NAV_WIDTH_MAX, "sat_nav_width_max", 10000.0, unchecked()},
    {E_PV_SAT_NAV_WIDTH, "sat_nav_width", 1100.0, clampToPresets(E_PV_SAT_NAV_WIDTH_MIN, E_PV_SAT_NAV_WIDTH_MAX)},
    {E_PV_SAT_NAV_HEIGHT_MIN, "sat_nav_height_min", 10.0, unchecked()},
    {E_PV_SAT_NAV_HEIGHT_MAX, "sat_nav_height_max", 10000.0, unchecked()},
    {E_PV_SAT_NAV_HEIGHT, "sat_nav_height", 1100.0, clampToPresets(E_PV_SAT_NAV_HEIGHT_MIN, E_PV_SAT_NAV_HEIGHT_MAX)},
    {E_PV_DEFAULT_FLOOR_MATERIAL_ID, "default_floor_material_id", 492, unchecked()},
    {E_PV_DEFAULT_WALL_MATERIAL_ID, "default_wall_material_id", 491, unchecked()},
    {E_PV_DEFAULT_OUTER_WALL_MATERIAL_ID, "default_outer_wall_material_id", 418, unchecked()},
    {E_PV_DEFAULT_CEILING_MATERIAL_ID, "default_ceiling_material_id", 302, unchecked()},
    {E_PV_DEFAULT_TOP_WALL_MATERIAL_ID, "default_top_wall_material_id", 253, unchecked()},
    {E_PV_PREVIEW_IMAGE_ASPECT_RATIO, "preview_image_aspect_ratio", "4:3", aspectRatio()},
    {E_PV_PREVIEW_IMAGE_MINIMUM_WIDTH, "preview_image_minimum_width", 0, unchecked()},
    {E_PV_PREVIEW_IMAGE_MINIMUM_HEIGHT, "preview_image_minimum_height", 0, unchecked()},
    {E_PV_SCREENSHOT_ASPECT_RATIO, "screenshot_aspect_ratio", "4:3", aspectRatioOrScreen()},
    {E_PV_SCREENSHOT_MINIMUM_WIDTH, "screenshot_minimum_width", 0, unchecked()},
    {E_PV_SCREENSHOT_MINIMUM_HEIGHT, "screenshot_minimum_height", 0, unchecked()},
    {E_PV_ENV_MIN_SUN_DIFFUSE_TEMPERATUR, "env_min_sun_diffuse_temperatur", 6504.0, minimumBelow(E_PV_ENV_MAX_SUN_DIFFUSE_TEMPERATUR)},
    {E_PV_ENV_MAX_SUN_DIFFUSE_TEMPERATUR, "env_max_sun_diffuse_temperatur", 7000.0, maximumAbove(E_PV_ENV_MIN_SUN_DIFFUSE_TEMPERATUR)},
    {E_PV_ENV_MIN_SUN_SPECULAR_TEMPERATUR, "env_min_sun_specular_temperatur", 6000.0f, minimumBelow(E_PV_ENV_MAX_SUN_DIFFUSE_TEMPERATUR)},
    {E_PV_ENV_MAX_SUN_SPECULAR_TEMPERATUR, "env_max_sun_specular_temperatur", 6504.0f, maximumAbove(E_PV_ENV_MIN_SUN_SPECULAR_TEMPERATUR)},
    {E_PV_ENV_MIN_SUN_GUI_TEMPERATUR, "env_min_sun_gui_temperatur", 4504.0f, minimumBelow(E_PV_ENV_MAX_SUN_GUI_TEMPERATUR)},
    {E_PV_ENV_MAX_SUN_GUI_TEMPERATUR, "env_max_sun_gui_temperatur", 8504.0f, maximumAbove(E_PV_ENV_MIN_SUN_GUI_TEMPERATUR)},
    {E_PV_ENV_MIN_AMBIENT_ATTENUATION_FACTOR, "env_min_ambient_attenuation_factor", 0, minimumBelow(E_PV_ENV_MAX_AMBIENT_ATTENUATION_FACTOR)},
    {E_PV_ENV_MAX_AMBIENT_ATTENUATION_FACTOR, "env_max_ambient_attenuation_factor", 1, maximumAbove(E_PV_ENV_MIN_AMBIENT_ATTENUATION_FACTOR)},
    {E_PV_ENV_AMBIENT_ATTENUATION_FACTOR, "env_ambient_attenuation_factor", 1.0 / 3.0, clampToPresets(E_PV_ENV_MIN_AMBIENT_ATTENUATION_FACTOR, E_PV_ENV_MAX_AMBIENT_ATTENUATION_FACTOR)},
    {E_PV_LIGHT_CONSTANT_ATTENUATION, "light_constant_attenuation", 0.5f, unchecked()},
    {E_PV_LIGHT_LINEAR_ATTENUATION, "light_linear_attenuation", 0.0022f, unchecked()},
    {E_PV_LIGHT_QUADRATIC_ATTENUATION, "light_quadratic_attenuation", 0.000021f, unchecked()},
};
// clang-format on

/// The number of the first row's value. The others follow without gaps.
constexpr int FIRST_VALUE = E_PV_FALLBACK + 1;

using RowsByValue = std::array<const PresetRow*, std::size(PRESETS)>;

constexpr RowsByValue rowsByValue()
{
    RowsByValue rows{};
    for (const PresetRow& row : PRESETS)
        rows[static_cast<std::size_t>(row.value - FIRST_VALUE)] = &row;
    return rows;
}
constexpr RowsByValue ROWS_BY_VALUE = rowsByValue();

constexpr std::size_t countOfValues()
{
    std::size_t count = 0;
    for (const PresetRow* row : ROWS_BY_VALUE)
        count += row ? 1 : 0;
    return count;
}
static_assert(countOfValues() == std::size(PRESETS), "one row for each value, and no gap between the values");

} // namespace

Rows<PresetRow> presetRows()
{
    return Rows(PRESETS);
}

const PresetRow* presetRow(E_PresetValue value)
{
    if (value < FIRST_VALUE)
        return nullptr;
    const auto index = static_cast<std::size_t>(value - FIRST_VALUE);
    return index < ROWS_BY_VALUE.size() ? ROWS_BY_VALUE[index] : nullptr;
}

} // namespace TEKLUVA
