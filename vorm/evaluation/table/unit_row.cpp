#include "unit_row.hpp"

#include <vorm/evaluation/table/cell_kind.hpp>
#include <vorm/evaluation/table/column_header.hpp>
#include <vorm/evaluation/text/characters.hpp>

#include <algorithm>
#include <array>

namespace vorm::evaluation {
namespace {

// Without the tonne and the tesla, which are usual names of times.
constexpr auto units = std::to_array<std::string_view>({
    "s",   "ms",    "us",    "µs",  "ns",   "min",   "h",     "d",    "sec",  "hh:mm:ss", "m",
    "mm",  "cm",    "km",    "um",  "µm",   "in",    "ft",    "mi",   "m/s",  "km/h",     "kph",
    "mph", "kn",    "g",     "kg",  "mg",   "lb",    "m/s^2", "m/s2", "m/s²", "rad",      "deg",
    "°",   "rad/s", "deg/s", "°/s", "rpm",  "1/min", "V",     "mV",   "kV",   "A",        "mA",
    "kA",  "W",     "mW",    "kW",  "MW",   "Ah",    "mAh",   "Wh",   "mWh",  "kWh",      "Ohm",
    "ohm", "Ω",     "F",     "H",   "Hz",   "kHz",   "MHz",   "GHz",  "N",    "kN",       "Nm",
    "J",   "kJ",    "MJ",    "Pa",  "hPa",  "kPa",   "MPa",   "bar",  "mbar", "psi",      "K",
    "°C",  "degC",  "C",     "°F",  "degF", "%",     "ppm",   "dB",   "dBA",  "l",        "L",
    "ml",  "l/h",   "l/min", "m^3", "m³",   "m3",    "m^2",   "m²",   "lx",   "mT",
});

bool isBracketed(std::string_view cell) {
    return cell.size() > 2 && ((cell.front() == '[' && cell.back() == ']') ||
                               (cell.front() == '(' && cell.back() == ')'));
}

// Names of units, whatever their case, as some programs write them out.
constexpr auto unitNames = std::to_array<std::string_view>({
    "volt",    "volts", "ampere", "amperes", "amp",    "amps",    "watt",    "watts",  "ohm",
    "ohms",    "hertz", "kelvin", "celsius", "degree", "degrees", "deg c",   "deg f",  "percent",
    "prozent", "meter", "meters", "metre",   "metres", "newton",  "newtons", "pascal", "grad",
});

bool isUnit(std::string_view cell) {
    const std::string name = lowerCase(cell);
    return isBracketed(cell) || std::find(units.begin(), units.end(), cell) != units.end() ||
           std::find(unitNames.begin(), unitNames.end(), name) != unitNames.end() ||
           (cell.size() > 2 && timeUnitIn({name, name, name}));
}

// Of one letter some are units as well.
bool isTimeName(const std::string& cell) {
    return cell.size() > 1 && timeNameOf({cell, cell, {}}) != TimeName::None;
}

}  // namespace

bool isUnitRow(const std::vector<std::string>& cells) {
    std::size_t known = 0;
    std::size_t others = 0;
    for (const std::string& cell : cells) {
        const CellKind kind = kindOf(cell);
        if (isUnit(cell)) {
            ++known;
        } else if (kind == CellKind::Text && !isTimeName(cell)) {
            ++others;
        } else if (kind != CellKind::Empty) {
            return false;
        }
    }
    return known > 0 && known >= others;
}

std::string unitIn(std::string_view cell) {
    const bool isNone = isMissingText(cell);
    return std::string(isBracketed(cell) ? trimmed(cell.substr(1, cell.size() - 2))
                       : isNone          ? std::string_view()
                                         : cell);
}

}  // namespace vorm::evaluation
