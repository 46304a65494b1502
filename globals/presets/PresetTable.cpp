#include "globals/presets/PresetTable_p.h"

#include "globals/presets/PresetRules_p.h"

namespace TEKLUVA {

using namespace PresetRules;

namespace {

constexpr NavigationValues ALONG_X = {E_PV_PERS_NAV_X, E_PV_FLIGHT_NAV_X, E_PV_SAT_NAV_X};
constexpr NavigationValues ALONG_Y = {E_PV_PERS_NAV_Y, E_PV_FLIGHT_NAV_Y, E_PV_SAT_NAV_Y};
constexpr NavigationValues ALONG_Z = {E_PV_PERS_NAV_Z, E_PV_FLIGHT_NAV_Z, E_PV_SAT_NAV_Z};

constexpr PresetConstraint asIs()
{
    return {&writeAsIs, "any value"};
}

constexpr PresetConstraint within(E_PresetValue lower, E_PresetValue upper)
{
    return {&writeWithin, "%lower to %upper", lower, upper};
}

constexpr PresetConstraint between(double min, double max)
{
    return {&writeBetween, "%lower to %upper", E_PV_NONE, E_PV_NONE, min, max};
}

constexpr PresetConstraint minimum()
{
    return {&writeMinimum, "only raised"};
}

constexpr PresetConstraint minimum(E_PresetValue maximum, const NavigationValues& dependents = {})
{
    return {&writeMinimum, "only raised, lifts %upper with it", E_PV_NONE, maximum, 0, 0, dependents};
}

constexpr PresetConstraint maximum(E_PresetValue minimum, const NavigationValues& dependents = {})
{
    return {&writeMaximum, "only lowered, takes %lower down with it", minimum, E_PV_NONE, 0, 0, dependents};
}

constexpr PresetConstraint roomCeiling()
{
    return {&writeRoomCeiling,
            "only lowered; more than max_cube_y or sat_nav_y + 50: lifts that one to 50 above it"};
}

constexpr PresetConstraint boxTop(E_PresetValue minimum, const NavigationValues& dependents)
{
    return {&writeBoxTop,
            "only lowered, takes %lower down with it; less than max_room_height + 50: min_cube_z instead",
            minimum,
            E_PV_NONE,
            0,
            0,
            dependents};
}

constexpr PresetConstraint satelliteHeight(E_PresetValue lower, E_PresetValue upper)
{
    return {&writeSatelliteHeight, "%lower to %upper; less than max_room_height + 50 is ignored", lower,
            upper};
}

constexpr PresetConstraint ratio()
{
    return {&writeRatio, "WIDTH:HEIGHT, 1 to 3 digits each"};
}

constexpr PresetConstraint ratioOrScreen()
{
    return {&writeRatioOrScreen, "WIDTH:HEIGHT, 1 to 3 digits each, or 0 for the screen's"};
}

// A row per preset, to be read like the table in a manual. Note env_min_sun_specular_temperatur: it is held
// against the diffuse maximum, which is meant.
// clang-format off
constexpr PresetTable PRESETS = {{
    {E_PV_MAX_ROOM_HEIGHT, "max_room_height", 2000.0, roomCeiling()},
    {E_PV_MIN_ROOM_HEIGHT, "min_room_height", 100.0, minimum()},
    {E_PV_ROOM_HEIGHT, "room_height", 270.0, within(E_PV_MIN_ROOM_HEIGHT, E_PV_MAX_ROOM_HEIGHT)},
    {E_PV_MIN_CONSTRUCTION_X, "min_construction_x", -1500, minimum(E_PV_MAX_CONSTRUCTION_X)},
    {E_PV_MAX_CONSTRUCTION_X, "max_construction_x", 1500, maximum(E_PV_MIN_CONSTRUCTION_X)},
    {E_PV_MIN_CONSTRUCTION_Y, "min_construction_y", -1500, minimum(E_PV_MAX_CONSTRUCTION_Y)},
    {E_PV_MAX_CONSTRUCTION_Y, "max_construction_y", 1500, maximum(E_PV_MIN_CONSTRUCTION_Y)},
    {E_PV_MIN_WALL_LENGTH, "min_wall_length", 5, minimum()},
    {E_PV_MIN_WALL_STRENGTH, "min_wall_strength", 0.2, minimum(E_PV_MAX_WALL_STRENGTH)},
    {E_PV_MAX_WALL_STRENGTH, "max_wall_strength", 100.0, maximum(E_PV_MIN_WALL_STRENGTH)},
    {E_PV_WALL_STRENGTH, "wall_strength", 20.0, within(E_PV_MIN_WALL_STRENGTH, E_PV_MAX_WALL_STRENGTH)},
    {E_PV_MIN_ENDSTRIP_HEIGHT, "min_endstrip_height", 1.0, minimum(E_PV_MAX_ENDSTRIP_HEIGHT)},
    {E_PV_MAX_ENDSTRIP_HEIGHT, "max_endstrip_height", 50.0, maximum(E_PV_MIN_ENDSTRIP_HEIGHT)},
    {E_PV_ENDSTRIP_HEIGHT, "endstrip_height", 15.0, within(E_PV_MIN_ENDSTRIP_HEIGHT, E_PV_MAX_ENDSTRIP_HEIGHT)},
    {E_PV_MIN_ENDSTRIP_STRENGTH, "min_endstrip_strength", 0.1, minimum(E_PV_MAX_ENDSTRIP_STRENGTH)},
    {E_PV_MAX_ENDSTRIP_STRENGTH, "max_endstrip_strength", 50.0, maximum(E_PV_MIN_ENDSTRIP_STRENGTH)},
    {E_PV_ENDSTRIP_STRENGTH, "endstrip_strength", 1.0, within(E_PV_MIN_ENDSTRIP_STRENGTH, E_PV_MAX_ENDSTRIP_STRENGTH)},
    {E_PV_SHOW_ENDSTRIPS, "show_endstrips", true, asIs()},
    {E_PV_SHOW_TOP_PLANES, "show_top_planes", true, asIs()},
    {E_PV_MIN_CUBE_X, "min_cube_x", -2000.0, minimum(E_PV_MAX_CUBE_X, ALONG_X)},
    {E_PV_MIN_CUBE_Y, "min_cube_y", 7.0, minimum(E_PV_MAX_CUBE_Y, ALONG_Y)},
    {E_PV_MIN_CUBE_Z, "min_cube_z", -2000.0, minimum(E_PV_MAX_CUBE_Z, ALONG_Z)},
    {E_PV_MAX_CUBE_X, "max_cube_x", 2000.0, maximum(E_PV_MIN_CUBE_X, ALONG_X)},
    {E_PV_MAX_CUBE_Y, "max_cube_y", 2000.0, boxTop(E_PV_MIN_CUBE_Y, ALONG_Y)},
    {E_PV_MAX_CUBE_Z, "max_cube_z", 2000.0, maximum(E_PV_MIN_CUBE_Z, ALONG_Z)},
    {E_PV_PERS_MOUSE_SENSITY, "pers_mouse_sensity", 0.1, between(0.01, 2)},
    {E_PV_PERS_WHEEL_SENSITY, "pers_wheel_sensity", 0.1, between(0.01, 2)},
    {E_PV_PERS_MOVING_STEP, "pers_moving_step", 5.0, between(0.01, 1000)},
    {E_PV_PERS_MOVING_TIMER_PERIOD, "pers_moving_timer_period", 25.0, between(1, 1000000)},
    {E_PV_PERS_TURNING_STEP, "pers_turning_step", 1.0, between(0.01, 1000)},
    {E_PV_PERS_TURNING_TIMER_PERIOD, "pers_turning_timer_period", 25.0, between(1, 1000000)},
    {E_PV_FLIGHT_MOUSE_SENSITY, "flight_mouse_sensity", 0.1, between(0.01, 2)},
    {E_PV_FLIGHT_WHEEL_SENSITY, "flight_wheel_sensity", 0.1, between(0.01, 2)},
    {E_PV_FLIGHT_MOVING_STEP, "flight_moving_step", 5.0, between(0.01, 1000)},
    {E_PV_FLIGHT_MOVING_TIMER_PERIOD, "flight_moving_timer_period", 25.0, between(1, 1000000)},
    {E_PV_FLIGHT_TURNING_STEP, "flight_turning_step", 1.0, between(0.01, 1000)},
    {E_PV_FLIGHT_TURNING_TIMER_PERIOD, "flight_turning_timer_period", 25.0, between(1, 1000000)},
    {E_PV_SAT_MOUSE_SENSITY, "sat_mouse_sensity", 0.1, between(0.01, 2)},
    {E_PV_SAT_WHEEL_SENSITY, "sat_wheel_sensity", 0.1, between(0.01, 2)},
    {E_PV_SAT_MOVING_STEP, "sat_moving_step", 5.0, between(0.01, 1000)},
    {E_PV_SAT_MOVING_TIMER_PERIOD, "sat_moving_timer_period", 25.0, between(1, 1000000)},
    {E_PV_SAT_TURNING_STEP, "sat_turning_step", 1.0, between(0.01, 1000)},
    {E_PV_SAT_TURNING_TIMER_PERIOD, "sat_turning_timer_period", 25.0, between(1, 1000000)},
    {E_PV_SAT_MAGNIFY_WHEEL_STEP, "sat_magnify_wheel_step", 0.005, between(0, 1)},
    {E_PV_SAT_MAGNIFY_KEY_STEP, "sat_magnify_key_step", 0.5, between(0, 1)},
    {E_PV_SAT_MAGNIFY_WHEEL_RAPID_FACTOR, "sat_magnify_wheel_rapid_factor", 4.5, between(1, 10)},
    {E_PV_SAT_MAGNIFY_KEY_RAPID_FACTOR, "sat_magnify_key_rapid_factor", 3.0, between(1, 10)},
    {E_PV_PERS_NAV_X, "pers_nav_x", -550.0, within(E_PV_MIN_CUBE_X, E_PV_MAX_CUBE_X)},
    {E_PV_PERS_NAV_Y, "pers_nav_y", 170.0, within(E_PV_MIN_CUBE_Y, E_PV_MAX_CUBE_Y)},
    {E_PV_PERS_NAV_Z, "pers_nav_z", -550.0, within(E_PV_MIN_CUBE_Z, E_PV_MAX_CUBE_Z)},
    {E_PV_PERS_NAV_PITCH, "pers_nav_pitch", 5.0, asIs()},
    {E_PV_PERS_NAV_YAW, "pers_nav_yaw", 135.0, asIs()},
    {E_PV_PERS_NAV_LOCKED, "pers_nav_locked", false, asIs()},
    {E_PV_PERS_NAV_FOV_MIN, "pers_nav_fov_min", 20.0, asIs()},
    {E_PV_PERS_NAV_FOV_MAX, "pers_nav_fov_max", 120.0, asIs()},
    {E_PV_PERS_NAV_FOV, "pers_nav_fov", 45.0, within(E_PV_PERS_NAV_FOV_MIN, E_PV_PERS_NAV_FOV_MAX)},
    {E_PV_FLIGHT_NAV_X, "flight_nav_x", -550.0, within(E_PV_MIN_CUBE_X, E_PV_MAX_CUBE_X)},
    {E_PV_FLIGHT_NAV_Y, "flight_nav_y", 550.0, within(E_PV_MIN_CUBE_Y, E_PV_MAX_CUBE_Y)},
    {E_PV_FLIGHT_NAV_Z, "flight_nav_z", -550.0, within(E_PV_MIN_CUBE_Z, E_PV_MAX_CUBE_Z)},
    {E_PV_FLIGHT_NAV_PITCH, "flight_nav_pitch", 5.0, between(-90, 90)},
    {E_PV_FLIGHT_NAV_YAW, "flight_nav_yaw", 135.0, asIs()},
    {E_PV_FLIGHT_NAV_LOCKED, "flight_nav_locked", false, asIs()},
    {E_PV_FLIGHT_NAV_FOV_MIN, "flight_nav_fov_min", 20.0, asIs()},
    {E_PV_FLIGHT_NAV_FOV_MAX, "flight_nav_fov_max", 120.0, asIs()},
    {E_PV_FLIGHT_NAV_FOV, "flight_nav_fov", 45.0, within(E_PV_FLIGHT_NAV_FOV_MIN, E_PV_FLIGHT_NAV_FOV_MAX)},
    {E_PV_SAT_NAV_X, "sat_nav_x", 0.0, within(E_PV_MIN_CUBE_X, E_PV_MAX_CUBE_X)},
    {E_PV_SAT_NAV_Y, "sat_nav_y", &aboveHighestRoom, satelliteHeight(E_PV_MIN_CUBE_Y, E_PV_MAX_CUBE_Y)},
    {E_PV_SAT_NAV_Z, "sat_nav_z", 0.0, within(E_PV_MIN_CUBE_Z, E_PV_MAX_CUBE_Z)},
    {E_PV_SAT_NAV_PITCH, "sat_nav_pitch", 0.0, between(-90, 90)},
    {E_PV_SAT_NAV_YAW, "sat_nav_yaw", 0.0, asIs()},
    {E_PV_SAT_NAV_LOCKED, "sat_nav_locked", false, asIs()},
    {E_PV_SAT_NAV_WIDTH_MIN, "sat_nav_width_min", 10.0, asIs()},
    {E_PV_SAT_NAV_WIDTH_MAX, "sat_nav_width_max", 10000.0, asIs()},
    {E_PV_SAT_NAV_WIDTH, "sat_nav_width", 1100.0, within(E_PV_SAT_NAV_WIDTH_MIN, E_PV_SAT_NAV_WIDTH_MAX)},
    {E_PV_SAT_NAV_HEIGHT_MIN, "sat_nav_height_min", 10.0, asIs()},
    {E_PV_SAT_NAV_HEIGHT_MAX, "sat_nav_height_max", 10000.0, asIs()},
    {E_PV_SAT_NAV_HEIGHT, "sat_nav_height", 1100.0, within(E_PV_SAT_NAV_HEIGHT_MIN, E_PV_SAT_NAV_HEIGHT_MAX)},
    {E_PV_DEFAULT_FLOOR_MATERIAL_ID, "default_floor_material_id", 492, asIs()},
    {E_PV_DEFAULT_WALL_MATERIAL_ID, "default_wall_material_id", 491, asIs()},
    {E_PV_DEFAULT_OUTER_WALL_MATERIAL_ID, "default_outer_wall_material_id", 418, asIs()},
    {E_PV_DEFAULT_CEILING_MATERIAL_ID, "default_ceiling_material_id", 302, asIs()},
    {E_PV_DEFAULT_TOP_WALL_MATERIAL_ID, "default_top_wall_material_id", 253, asIs()},
    {E_PV_PREVIEW_IMAGE_ASPECT_RATIO, "preview_image_aspect_ratio", "4:3", ratio()},
    {E_PV_PREVIEW_IMAGE_MINIMUM_WIDTH, "preview_image_minimum_width", 0, asIs()},
    {E_PV_PREVIEW_IMAGE_MINIMUM_HEIGHT, "preview_image_minimum_height", 0, asIs()},
    {E_PV_SCREENSHOT_ASPECT_RATIO, "screenshot_aspect_ratio", "4:3", ratioOrScreen()},
    {E_PV_SCREENSHOT_MINIMUM_WIDTH, "screenshot_minimum_width", 0, asIs()},
    {E_PV_SCREENSHOT_MINIMUM_HEIGHT, "screenshot_minimum_height", 0, asIs()},
    {E_PV_ENV_MIN_SUN_DIFFUSE_TEMPERATUR, "env_min_sun_diffuse_temperatur", 6504.0, minimum(E_PV_ENV_MAX_SUN_DIFFUSE_TEMPERATUR)},
    {E_PV_ENV_MAX_SUN_DIFFUSE_TEMPERATUR, "env_max_sun_diffuse_temperatur", 7000.0, maximum(E_PV_ENV_MIN_SUN_DIFFUSE_TEMPERATUR)},
    {E_PV_ENV_MIN_SUN_SPECULAR_TEMPERATUR, "env_min_sun_specular_temperatur", 6000.0f, minimum(E_PV_ENV_MAX_SUN_DIFFUSE_TEMPERATUR)},
    {E_PV_ENV_MAX_SUN_SPECULAR_TEMPERATUR, "env_max_sun_specular_temperatur", 6504.0f, maximum(E_PV_ENV_MIN_SUN_SPECULAR_TEMPERATUR)},
    {E_PV_ENV_MIN_SUN_GUI_TEMPERATUR, "env_min_sun_gui_temperatur", 4504.0f, minimum(E_PV_ENV_MAX_SUN_GUI_TEMPERATUR)},
    {E_PV_ENV_MAX_SUN_GUI_TEMPERATUR, "env_max_sun_gui_temperatur", 8504.0f, maximum(E_PV_ENV_MIN_SUN_GUI_TEMPERATUR)},
    {E_PV_ENV_MIN_AMBIENT_ATTENUATION_FACTOR, "env_min_ambient_attenuation_factor", 0, minimum(E_PV_ENV_MAX_AMBIENT_ATTENUATION_FACTOR)},
    {E_PV_ENV_MAX_AMBIENT_ATTENUATION_FACTOR, "env_max_ambient_attenuation_factor", 1, maximum(E_PV_ENV_MIN_AMBIENT_ATTENUATION_FACTOR)},
    {E_PV_ENV_AMBIENT_ATTENUATION_FACTOR, "env_ambient_attenuation_factor", 1.0 / 3.0, within(E_PV_ENV_MIN_AMBIENT_ATTENUATION_FACTOR, E_PV_ENV_MAX_AMBIENT_ATTENUATION_FACTOR)},
    {E_PV_LIGHT_CONSTANT_ATTENUATION, "light_constant_attenuation", 0.5f, asIs()},
    {E_PV_LIGHT_LINEAR_ATTENUATION, "light_linear_attenuation", 0.0022f, asIs()},
    {E_PV_LIGHT_QUADRATIC_ATTENUATION, "light_quadratic_attenuation", 0.000021f, asIs()},
}};
// clang-format on

/// The place of each value's row.
constexpr auto placesByValue()
{
    static_assert(PRESET_COUNT + E_PV_FALLBACK == E_PV_LIGHT_QUADRATIC_ATTENUATION,
                  "PresetManager has a place for each");
    std::array<int, PRESET_COUNT + E_PV_FALLBACK + 1> places{};
    for (int& place : places)
        place = -1;
    for (std::size_t i = 0; i < PRESETS.size(); ++i)
        places[static_cast<std::size_t>(PRESETS[i].value)] = static_cast<int>(i);
    return places;
}
constexpr auto PLACES = placesByValue();

constexpr bool everyValueHasARow()
{
    for (std::size_t value = E_PV_FALLBACK + 1; value < PLACES.size(); ++value) {
        if (PLACES[value] < 0)
            return false;
    }
    return true;
}
static_assert(everyValueHasARow(), "one row for each value from 2 to 101");

} // namespace

const PresetTable& presetTable()
{
    return PRESETS;
}

const PresetRow* presetRow(E_PresetValue value)
{
    if (value <= E_PV_FALLBACK || value >= static_cast<int>(PLACES.size()))
        return nullptr;
    return &PRESETS[static_cast<std::size_t>(PLACES[static_cast<std::size_t>(value)])];
}

} // namespace TEKLUVA
