#include "svg_report.hpp"

#include <vorm/evaluation/drawing/axis_ticks.hpp>
#include <vorm/evaluation/drawing/value_scale.hpp>
#include <vorm/evaluation/report/html_text.hpp>
#include <vorm/evaluation/report/verdict_text.hpp>

#include <algorithm>
#include <cmath>
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

// A plot of a signal: where it is, and where values stand in it.
struct Plot {
    const SignalDrawing& signal;
    ValueScale scale;
    double top;
    double height;

    // What is infinite stands at the edge, beyond all that is not.
    double y(double value) const {
        if (std::isinf(value)) {
            return value > 0 ? top : top + height;
        }
        return top + height - valueMargin - scale.share(value) * (height - 2 * valueMargin);
    }
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
               R"(<clipPath id="range"><rect x=")" +
               pixel(left) + R"(" y="0" width=")" + pixel(right() - left) + R"(" height=")" +
               pixel(y_) +
               R"("/></clipPath></defs><rect width="100%" height="100%" fill="#ffffff"/>)"
               "\n";
    }

    void add(const std::string& elements) { body_ += elements; }

    double right() const { return width_ - rightMargin; }

    double x(ExactTime time) const {
        return left + (time - from_).seconds() / (to_ - from_).seconds() * (right() - left);
    }

    double x(double counted) const { return x(drawing_.timeline.timeAt(counted)); }

    // None is narrower than two pixels.
    std::string spans(const std::vector<TimeSpan>& all, double top, double height) const {
        std::string data;
        double drawnTo = -1;
        for (const TimeSpan& span : all) {
            const double begin = std::clamp(x(span.start), left, right() - 2);
            const double end = std::clamp(x(span.end), begin + 2, right());
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
        const std::string open = spans(drawn_.open, y_ + 2, 12);
        add(path(open, R"(fill="#ffffff")") + path(open, hatching));
        add(path(spans(outcome_.failures, y_, 16), R"(fill="#a40e26")"));
        y_ += 22;
    }

    void addSignal(std::size_t position) {
        const CountedSpan range{drawing_.timeline.at(from_), drawing_.timeline.at(to_)};
        const SignalDrawing signal = thinned(within(drawing_.signals[position], range), perPixel());
        std::vector<double> thresholds;
        for (const Threshold& threshold : drawn_.thresholds) {
            if (threshold.signal == position) {
                thresholds.push_back(threshold.value);
            }
        }
        std::vector<double> values = thresholds;
        for (const DrawnPiece& piece : signal.pieces) {
            values.insert(values.end(), piece.values.begin(), piece.values.end());
        }
        add(text(left, y_ + 10, signal.name + (signal.unit.empty() ? "" : " [" + signal.unit + "]"),
                 R"(font-weight="bold")"));
        const Plot plot{signal, ValueScale(signal, values), y_ + 14,
                        signal.kind == DrawingKind::Switch ? switchHeight : plotHeight};
        add(path(spans(drawn_.open, plot.top, plot.height), hatching));
        add(path(spans(outcome_.failures, plot.top, plot.height), R"(fill="#ffcecb")"));
        addValueAxis(plot);
        addThresholds(plot, thresholds);
        addCurve(plot);
        addCauses(plot);
        y_ = plot.top + plot.height + 6;
    }

    Thinning perPixel() const {
        const auto columns = static_cast<std::size_t>(right() - left);
        return {columns, 4 * columns, {}, 0};
    }

    void addLevel(double y, const std::string& attributes) {
        add(path("M" + pixel(left) + " " + pixel(y) + "H" + pixel(right()), attributes));
    }

    void addValueAxis(const Plot& plot) {
        const auto addTick = [&](double value, const std::string& label) {
            addLevel(plot.y(value), R"(stroke="#d0d7de" stroke-width="0.5")");
            add(text(left - 6, plot.y(value) + 4, label, R"(text-anchor="end")"));
        };
        if (plot.signal.kind == DrawingKind::Switch) {
            addTick(0, "false");
            addTick(1, "true");
        } else if (plot.signal.kind == DrawingKind::Levels) {
            for (std::size_t i = 0; i < plot.signal.levels.size(); ++i) {
                addTick(static_cast<double>(i), plot.signal.levels[i]);
            }
        } else {
            for (const double value : valueTicks(plot.scale.least(), plot.scale.greatest(), 5)) {
                addTick(value, numberText(value));
            }
        }
        add(path("M" + pixel(left) + " " + pixel(plot.top) + "v" + pixel(plot.height),
                 R"(stroke="#656d76")"));
    }

    void addThresholds(const Plot& plot, const std::vector<double>& thresholds) {
        for (const double threshold : thresholds) {
            addLevel(plot.y(threshold), R"(stroke="#9a6700" stroke-dasharray="5 3")");
            add(text(right(), plot.y(threshold) - 3, numberText(threshold),
                     R"(text-anchor="end" fill="#9a6700")"));
        }
    }

    void addCurve(const Plot& plot) {
        std::string data;
        for (const DrawnPiece& piece : plot.signal.pieces) {
            std::size_t begin = 0;
            for (std::size_t i = 0; i <= piece.times.size(); ++i) {
                if (i == piece.times.size() || std::isnan(piece.values[i])) {
                    data += run(plot, piece, begin, i);
                    begin = i + 1;
                }
            }
        }
        add(path(infiniteMarks(plot), R"x(fill="#9a6700" clip-path="url(#range)")x"));
        add(path(data,
                 R"x(fill="none" stroke="#0a3069" stroke-width="1.3" clip-path="url(#range)")x"));
    }

    // A triangle at the edge for each sample that is infinite.
    std::string infiniteMarks(const Plot& plot) const {
        std::string data;
        for (const DrawnPiece& piece : plot.signal.pieces) {
            for (std::size_t i = 0; i < piece.times.size(); ++i) {
                if (std::isinf(piece.values[i])) {
                    data += "M" + pixel(x(piece.times[i])) + " " + pixel(plot.y(piece.values[i])) +
                            (piece.values[i] > 0 ? "l4 6h-8z" : "l4 -6h-8z");
                }
            }
        }
        return data;
    }

    // Samples that are numbers, from one to before another.
    std::string run(const Plot& plot, const DrawnPiece& piece, std::size_t begin,
                    std::size_t end) const {
        const bool isHeld = plot.signal.kind != DrawingKind::Lines;
        std::string data;
        for (std::size_t i = begin; i < end; ++i) {
            const std::string at = pixel(x(piece.times[i]));
            data += i == begin ? "M" : isHeld ? "H" : "L";
            data += at;
            data += i > begin && isHeld ? "V" : " ";
            data += pixel(plot.y(piece.values[i]));
        }
        if (begin == end) {
            return data;
        }
        // Held until a NaN, or to the end of the piece.
        const double last = x(piece.times[end - 1]);
        const bool isLast = end == piece.times.size();
        const double heldTo = isLast ? x(piece.end) : isHeld ? x(piece.times[end]) : last;
        // What is known for an instant only would not be seen.
        constexpr double least = 4;
        if (end - begin == 1 && heldTo - last < least) {
            return "M" + pixel(last - least / 2) + " " + pixel(plot.y(piece.values[begin])) + "h" +
                   pixel(least);
        }
        return heldTo > last ? data + "H" + pixel(heldTo) : data;
    }

    void addCauses(const Plot& plot) {
        std::vector<TimeSpan> marked;
        for (const FailureExplanation& explanation : outcome_.explanations) {
            for (const Cause& cause : explanation.causes) {
                if (std::find(cause.signals.begin(), cause.signals.end(), plot.signal.name) !=
                    cause.signals.end()) {
                    marked.push_back(cause.span);
                }
            }
        }
        std::sort(marked.begin(), marked.end(),
                  [](const TimeSpan& a, const TimeSpan& b) { return a.start < b.start; });
        add(path(spans(marked, plot.top + plot.height - 3, 3), R"(fill="#0969da")"));
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
