#include "svg_report.hpp"

#include <vorm/evaluation/drawing/axis_ticks.hpp>
#include <vorm/evaluation/report/html_text.hpp>
#include <vorm/evaluation/report/verdict_text.hpp>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace vorm::evaluation {
namespace {

constexpr double left = 80;
constexpr double rightMargin = 16;
constexpr double plotHeight = 110;
constexpr double switchHeight = 34;
constexpr double valueMargin = 6;
constexpr const char* hatching = R"x(fill="url(#open)")x";

// Hundredths of a pixel are more than anybody sees.
std::string pixel(double number) {
    return numberText(std::round(number * 100) / 100);
}

std::string attribute(const std::string& name, const std::string& value) {
    return " " + name + "=\"" + htmlText(value) + "\"";
}

std::string path(const std::string& data, const std::string& attributes) {
    return data.empty() ? "" : "<path" + attribute("d", data) + " " + attributes + "/>\n";
}

std::string text(double x, double y, const std::string& content, const std::string& attributes) {
    return "<text" + attribute("x", pixel(x)) + attribute("y", pixel(y)) + " " + attributes + ">" +
           htmlText(content) + "</text>\n";
}

// Where the values of a signal stand in its plot.
class ValueScale {
public:
    ValueScale(const SignalDrawing& signal, const std::vector<double>& thresholds) {
        if (signal.kind == DrawingKind::Switch || signal.kind == DrawingKind::Levels) {
            const bool isSwitch = signal.kind == DrawingKind::Switch;
            height = isSwitch ? switchHeight : plotHeight;
            least_ = 0;
            greatest_ = isSwitch ? 1 : std::max(1.0, static_cast<double>(signal.levels.size()) - 1);
            return;
        }
        double least = std::numeric_limits<double>::infinity();
        double greatest = -least;
        const auto include = [&](const std::vector<double>& values) {
            for (const double value : values) {
                least = std::isfinite(value) ? std::min(least, value) : least;
                greatest = std::isfinite(value) ? std::max(greatest, value) : greatest;
            }
        };
        include(thresholds);
        for (const DrawnPiece& piece : signal.pieces) {
            include(piece.values);
        }
        if (least <= greatest) {
            const double margin = least < greatest ? 0 : std::max(std::abs(least) * 0.1, 1.0);
            least_ = least - margin;
            greatest_ = greatest + margin;
        }
    }

    // Infinite values stand at the edges. Halves, since the greatest doubles are too far apart.
    double y(double value) const {
        const double share = (value / 2 - least_ / 2) / (greatest_ / 2 - least_ / 2);
        return height - valueMargin - std::clamp(share, 0.0, 1.0) * (height - 2 * valueMargin);
    }

    double least() const { return least_; }
    double greatest() const { return greatest_; }

    double height = plotHeight;

private:
    double least_ = 0;
    double greatest_ = 1;
};

class Picture {
public:
    Picture(const RecordingOutcome& recording, std::size_t assessment,
            const RecordingDrawing& drawing, const SvgStyle& style)
        : recording_(recording),
          outcome_(recording.assessments[assessment]),
          drawing_(drawing),
          drawn_(*drawing.assessments[assessment]),
          width_(static_cast<double>(style.width)),
          from_(outcome_.from),
          to_(outcome_.from < outcome_.to ? outcome_.to : outcome_.from + second) {}

    std::string draw() {
        add(text(left, 18,
                 verdictText(outcome_) + "  " + outcome_.name + ", " + recording_.recording,
                 R"(font-weight="bold" font-size="14")"));
        y_ = 30;
        addVerdict();
        for (const std::size_t position : drawn_.signals) {
            addSignal(position);
        }
        addTimeAxis();
        return head() + body_ + "</svg>\n";
    }

private:
    std::string head() const {
        return R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 )" + pixel(width_) + " " +
               pixel(y_) + R"(" width=")" + pixel(width_) + R"(" height=")" + pixel(y_) +
               R"(" font-family="sans-serif" font-size="11" fill="#1b1f24">)" + "\n<title>" +
               htmlText(outcome_.name) + "</title>\n" +
               R"(<defs><pattern id="open" width="5" height="5" patternUnits="userSpaceOnUse" )"
               R"x(patternTransform="rotate(-45)"><path d="M0 0V5" stroke="#8c959f"/></pattern>)x"
               R"(</defs><rect width="100%" height="100%" fill="#ffffff"/>)"
               "\n";
    }

    void add(const std::string& elements) { body_ += elements; }

    double right() const { return width_ - rightMargin; }

    double x(ExactTime time) const {
        const ExactTime inside = std::clamp(time, from_, to_);
        return left + (inside - from_).seconds() / (to_ - from_).seconds() * (right() - left);
    }

    double x(double counted) const { return x(drawing_.timeline.timeAt(counted)); }

    // None is narrower than two pixels.
    std::string spans(const std::vector<TimeSpan>& all, double top, double height) const {
        std::string data;
        double drawnTo = -1;
        for (const TimeSpan& span : all) {
            const double begin = std::min(x(span.start), right() - 2);
            const double end = std::max(x(span.end), begin + 2);
            if (end > drawnTo) {
                data += "M" + pixel(std::max(begin, drawnTo)) + " " + pixel(top) + "H" +
                        pixel(end) + "v" + pixel(height) + "H" + pixel(std::max(begin, drawnTo)) +
                        "z";
                drawnTo = end;
            }
        }
        return data;
    }

    void addVerdict() {
        add(text(left - 8, y_ + 11, "verdict", R"(text-anchor="end")"));
        add(path(spans({{outcome_.from, outcome_.to}}, y_ + 5, 6), R"(fill="#2da44e")"));
        const std::string open = spans(outcome_.openSpans, y_ + 2, 12);
        add(path(open, R"(fill="#ffffff")") + path(open, hatching));
        add(path(spans(outcome_.failures, y_, 16), R"(fill="#a40e26")"));
        y_ += 22;
    }

    void addSignal(std::size_t position) {
        const SignalDrawing signal = thinned(drawing_.signals[position], perPixel());
        std::vector<double> thresholds;
        for (const Threshold& threshold : drawn_.thresholds) {
            if (threshold.signal == position) {
                thresholds.push_back(threshold.value);
            }
        }
        const ValueScale scale(signal, thresholds);
        add(text(left, y_ + 10, signal.name + (signal.unit.empty() ? "" : " [" + signal.unit + "]"),
                 R"(font-weight="bold")"));
        y_ += 14;
        add(path(spans(outcome_.openSpans, y_, scale.height), hatching));
        add(path(spans(outcome_.failures, y_, scale.height), R"(fill="#ffcecb")"));
        addValueAxis(signal, scale);
        for (const double threshold : thresholds) {
            const double at = y_ + scale.y(threshold);
            add(path("M" + pixel(left) + " " + pixel(at) + "H" + pixel(right()),
                     R"(stroke="#9a6700" stroke-dasharray="5 3")"));
            add(text(right(), at - 3, numberText(threshold),
                     R"(text-anchor="end" fill="#9a6700")"));
        }
        addCurve(signal, scale);
        addCauses(signal, scale);
        y_ += scale.height + 6;
    }

    Thinning perPixel() const {
        const auto columns = static_cast<std::size_t>(right() - left);
        return {columns, 4 * columns, {}, 0};
    }

    void addValueAxis(const SignalDrawing& signal, const ValueScale& scale) {
        const auto addTick = [&](double value, const std::string& label) {
            const double at = y_ + scale.y(value);
            add(path("M" + pixel(left) + " " + pixel(at) + "H" + pixel(right()),
                     R"(stroke="#d0d7de" stroke-width="0.5")"));
            add(text(left - 6, at + 4, label, R"(text-anchor="end")"));
        };
        if (signal.kind == DrawingKind::Switch) {
            addTick(0, "false");
            addTick(1, "true");
        } else if (signal.kind == DrawingKind::Levels) {
            for (std::size_t i = 0; i < signal.levels.size(); ++i) {
                addTick(static_cast<double>(i), signal.levels[i]);
            }
        } else {
            for (const double value : valueTicks(scale.least(), scale.greatest(), 5)) {
                addTick(value, numberText(value));
            }
        }
        add(path("M" + pixel(left) + " " + pixel(y_) + "v" + pixel(scale.height),
                 R"(stroke="#656d76")"));
    }

    void addCurve(const SignalDrawing& signal, const ValueScale& scale) {
        const bool isHeld = signal.kind != DrawingKind::Lines;
        std::string data;
        for (const DrawnPiece& piece : signal.pieces) {
            bool isBegun = false;
            for (std::size_t i = 0; i < piece.times.size(); ++i) {
                if (std::isnan(piece.values[i])) {
                    // A value is held until the NaN.
                    data += isBegun && isHeld ? "H" + pixel(x(piece.times[i])) : "";
                    isBegun = false;
                    continue;
                }
                const std::string at = pixel(x(piece.times[i]));
                const std::string to = pixel(y_ + scale.y(piece.values[i]));
                data += !isBegun ? "M" : isHeld ? "H" : "L";
                data += at;
                data += isBegun && isHeld ? "V" : " ";
                data += to;
                isBegun = true;
            }
            // What is known for an instant only would not be seen.
            data += isBegun ? "H" + pixel(std::max(x(piece.end), x(piece.times.back()) + 1)) : "";
        }
        add(path(data, R"(fill="none" stroke="#0a3069" stroke-width="1.3")"));
    }

    void addCauses(const SignalDrawing& signal, const ValueScale& scale) {
        std::vector<TimeSpan> marked;
        for (const FailureExplanation& explanation : outcome_.explanations) {
            for (const Cause& cause : explanation.causes) {
                if (std::find(cause.signals.begin(), cause.signals.end(), signal.name) !=
                    cause.signals.end()) {
                    marked.push_back(cause.span);
                }
            }
        }
        std::sort(marked.begin(), marked.end(),
                  [](const TimeSpan& a, const TimeSpan& b) { return a.start < b.start; });
        add(path(spans(marked, y_ + scale.height - 3, 3), R"(fill="#0969da")"));
    }

    void addTimeAxis() {
        std::string marks = "M" + pixel(left) + " " + pixel(y_) + "H" + pixel(right());
        for (const ExactTime time : timeTicks(from_, to_, 8)) {
            marks += "M" + pixel(x(time)) + " " + pixel(y_) + "v4";
            add(text(x(time), y_ + 16, time.text(), R"(text-anchor="middle")"));
        }
        add(path(marks, R"(stroke="#656d76")"));
        add(text(left - 8, y_ + 16, "time [s]", R"(text-anchor="end")"));
        y_ += 24;
    }

    const RecordingOutcome& recording_;
    const AssessmentOutcome& outcome_;
    const RecordingDrawing& drawing_;
    const AssessmentDrawing& drawn_;
    const double width_;
    const ExactTime from_;
    const ExactTime to_;
    double y_ = 0;
    std::string body_;
};

}  // namespace

std::string svgReport(const RecordingOutcome& outcome, std::size_t assessment,
                      const RecordingDrawing& drawing, const SvgStyle& style) {
    return drawing.assessments[assessment] ? Picture(outcome, assessment, drawing, style).draw()
                                           : "";
}

}  // namespace vorm::evaluation
