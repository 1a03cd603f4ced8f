#include "terminal_plot.hpp"

#include <vorm/evaluation/drawing/value_columns.hpp>
#include <vorm/evaluation/drawing/value_scale.hpp>
#include <vorm/evaluation/report/text_table.hpp>
#include <vorm/evaluation/report/time_writer.hpp>
#include <vorm/evaluation/report/verdict_text.hpp>
#include <vorm/evaluation/text/characters.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace vorm::evaluation {
namespace {

// Numbers of five digits fit.
constexpr std::size_t labelWidth = 12;
constexpr int labelDigits = 5;

// At the right end of the column of labels; of a longer text its begin.
std::string asLabel(const std::string& text) {
    const std::size_t characters = charactersIn(text);
    if (characters <= labelWidth) {
        return std::string(labelWidth - characters, ' ') + text;
    }
    std::size_t end = 0;
    for (std::size_t shown = 0; shown < labelWidth; ++shown) {
        do {
            ++end;
        } while ((static_cast<unsigned char>(text[end]) & 0xc0U) == 0x80U);
    }
    return text.substr(0, end);
}

// The failing interval with all its causes and a margin.
TimeSpan shownSpan(const AssessmentOutcome& outcome, const std::optional<ExactTime>& margin) {
    const TimeSpan shown = outcome.failureWithCauses(0);
    const ExactTime range = outcome.to - outcome.from;
    const ExactTime fitting = std::max(shown.length(), ExactTime(range.attoseconds() / 50));
    const ExactTime around = margin.value_or(fitting);
    return {std::max(outcome.from, shown.start - around), std::min(outcome.to, shown.end + around)};
}

// Those of the causes, each once.
std::vector<const Signal*> signalsToBlame(const AssessmentOutcome& outcome,
                                          const Recording& recording) {
    std::vector<const Signal*> signals;
    for (const Cause& cause : outcome.explanations.front().causes) {
        for (const std::string& name : cause.signals) {
            const Signal* signal = recording.find(name);
            if (signal != nullptr &&
                std::find(signals.begin(), signals.end(), signal) == signals.end()) {
                signals.push_back(signal);
            }
        }
    }
    return signals;
}

// A signal as lines of block characters, each of two halves.
class Blocks {
public:
    Blocks(const SignalDrawing& drawing, const std::vector<std::optional<ValueRange>>& columns,
           std::size_t height)
        : drawing_(drawing),
          columns_(columns),
          height_(drawing.kind == DrawingKind::Switch ? 1 : height),
          scale_(drawing, endsOf(columns)),
          lowest_(height_ > 2 && hasInfinite(-1) ? 1 : 0),
          highest_(height_ - (height_ > 2 && hasInfinite(1) ? 2 : 1)) {}

    std::vector<std::string> lines() const {
        std::vector<std::string> lines;
        for (std::size_t line = height_; line-- > 0;) {
            std::string text;
            for (const auto& column : columns_) {
                text += block(column, line);
            }
            lines.push_back(asLabel(label(line)) + " │" + text);
        }
        return lines;
    }

private:
    static std::vector<double> endsOf(const std::vector<std::optional<ValueRange>>& columns) {
        std::vector<double> values;
        for (const auto& column : columns) {
            if (column) {
                values.insert(values.end(), {column->least, column->greatest});
            }
        }
        return values;
    }

    bool hasInfinite(double sign) const {
        const double infinite = sign * std::numeric_limits<double>::infinity();
        return std::any_of(columns_.begin(), columns_.end(), [=](const auto& column) {
            return column && (column->least == infinite || column->greatest == infinite);
        });
    }

    // What is infinite has a line of its own, where there are three.
    std::size_t level(double value) const {
        if (std::isinf(value)) {
            return value > 0 ? 2 * height_ - 1 : 0;
        }
        const auto top = static_cast<double>(2 * (highest_ - lowest_) + 1);
        return 2 * lowest_ + static_cast<std::size_t>(std::lround(scale_.share(value) * top));
    }

    const char* block(const std::optional<ValueRange>& column, std::size_t line) const {
        if (!column) {
            return " ";
        }
        const std::size_t from = level(column->least);
        const std::size_t to = level(column->greatest);
        const bool hasLower = from <= 2 * line && 2 * line <= to;
        const bool hasUpper = from <= 2 * line + 1 && 2 * line + 1 <= to;
        constexpr std::array blocks{" ", "▄", "▀", "█"};
        return blocks[(hasLower ? 1U : 0U) + (hasUpper ? 2U : 0U)];
    }

    std::string label(std::size_t line) const {
        if (drawing_.kind == DrawingKind::Switch) {
            return "";
        }
        if (line > highest_ || line < lowest_) {
            return line > highest_ ? "inf" : "-inf";
        }
        const bool isTop = line == highest_;
        if (!isTop && line > lowest_) {
            return "";
        }
        const double value = isTop ? scale_.greatest() : scale_.least();
        if (drawing_.kind == DrawingKind::Levels) {
            const auto position = static_cast<std::size_t>(value);
            return position < drawing_.levels.size() ? withoutControls(drawing_.levels[position])
                                                     : "";
        }
        return numberText(value, labelDigits);
    }

    const SignalDrawing& drawing_;
    const std::vector<std::optional<ValueRange>>& columns_;
    const std::size_t height_;
    const ValueScale scale_;
    const std::size_t lowest_;   // line of what is finite
    const std::size_t highest_;  // line of what is finite
};

// Which columns the failing intervals touch.
std::string failureMarks(const AssessmentOutcome& outcome, const Timeline& timeline,
                         const CountedSpan& window, std::size_t columns) {
    SignalDrawing failing{"", "", DrawingKind::Switch, {}, {}, 0};
    for (const TimeSpan& failure : outcome.failures) {
        failing.pieces.push_back({{timeline.at(failure.start)}, {1}, timeline.at(failure.end)});
    }
    std::string marks;
    for (const auto& column : valueColumns(failing, window, columns)) {
        marks += column ? "━" : " ";
    }
    return marks;
}

std::string timeAxis(const TimeSpan& shown, std::size_t columns, const TimeWriter& times) {
    const std::string from = times.number(shown.start) + " s";
    const std::string to = times.number(shown.end) + " s";
    const std::size_t between = columns - std::min(columns, from.size() + to.size());
    return from + std::string(between, ' ') + to;
}

std::string caption(const Signal& signal) {
    return withoutControls(signal.name) +
           (signal.unit.empty() ? "" : " [" + withoutControls(signal.unit) + "]");
}

}  // namespace

std::string terminalPlot(const AssessmentOutcome& outcome, const Recording& recording,
                         const TerminalPlotStyle& style) {
    if (outcome.failures.empty() || outcome.explanations.empty()) {
        return "";
    }
    const TimeSpan shown = shownSpan(outcome, style.margin);
    const CountedSpan window{recording.timeline.at(shown.start), recording.timeline.at(shown.end)};
    const std::vector<const Signal*> signals = signalsToBlame(outcome, recording);
    if (signals.empty() || window.first >= window.last) {
        return "";
    }
    const std::size_t columns = std::max<std::size_t>(style.width, 40) - labelWidth - 2;
    std::string text;
    for (const Signal* signal : signals) {
        const SignalDrawing drawing = drawingOf(*signal);
        text += caption(*signal) + "\n";
        const auto values = valueColumns(drawing, window, columns);
        for (const std::string& line : Blocks(drawing, values, style.height).lines()) {
            text += line + "\n";
        }
    }
    const TimeWriter times =
        TimeWriter(recordedTimes(recording)).tellingApart({shown.start, shown.end});
    const std::string marks = failureMarks(outcome, recording.timeline, window, columns);
    return text + asLabel("fails") + "  " + (style.colours ? coloured(marks, Colour::Red) : marks) +
           "\n" + asLabel("") + "  " + timeAxis(shown, columns, times) + "\n";
}

}  // namespace vorm::evaluation
