#include "html_report.hpp"

#include <vorm/evaluation/assessment/wanted_signals.hpp>
#include <vorm/evaluation/report/drawing_island.hpp>
#include <vorm/evaluation/report/html/page_parts.hpp>
#include <vorm/evaluation/report/html_text.hpp>
#include <vorm/evaluation/report/interval_lines.hpp>
#include <vorm/evaluation/report/outcome_mark.hpp>
#include <vorm/evaluation/report/parameter_text.hpp>
#include <vorm/evaluation/report/verdict_text.hpp>

#include <algorithm>
#include <array>
#include <map>
#include <numeric>
#include <utility>

namespace vorm::evaluation {
namespace {

// Of a hash in hexadecimal digits, as content security policies want it.
std::string base64(std::string_view hex) {
    constexpr std::string_view digits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    constexpr std::string_view hexDigits = "0123456789abcdef";
    std::string text;
    unsigned bits = 0;
    unsigned count = 0;
    for (const char c : hex) {
        bits = (bits << 4U) | static_cast<unsigned>(hexDigits.find(c));
        count += 4;
        if (count >= 6) {
            count -= 6;
            text += digits[(bits >> count) & 0x3fU];
        }
    }
    if (count > 0) {
        text += digits[(bits << (6 - count)) & 0x3fU];
    }
    text.append((4 - text.size() % 4) % 4, '=');
    return text;
}

std::string element(const std::string& name, const std::string& attributes,
                    const std::string& content) {
    return "<" + name + (attributes.empty() ? "" : " " + attributes) + ">" + content + "</" + name +
           ">\n";
}

std::string textElement(const std::string& name, const std::string& attributes,
                        std::string_view text) {
    return text.empty() ? "" : element(name, attributes, htmlText(text));
}

std::string listElement(const std::string& attributes, const std::vector<std::string>& items) {
    std::string content;
    for (const std::string& item : items) {
        content += textElement("li", "", item);
    }
    return content.empty() ? "" : element("ul", attributes, content);
}

// A class of the page, and the sign that says the same without its colour.
struct PageMark {
    const char* name;
    const char* sign;
    const char* text;
};

// In the order of the marks.
constexpr std::array<PageMark, markCount> pageMarks{{{"ERROR", "!", "ERROR"},
                                                     {"FAIL", "✗", "FAIL"},
                                                     {"WARNING", "⚠", "WARNING"},
                                                     {"NO_RESULT", "?", "NO_RESULT"},
                                                     {"OPEN", "?", "PASS (open)"},
                                                     {"INFO", "ℹ", "INFO"},
                                                     {"PASS", "✓", "PASS"}}};

const PageMark& pageMarkOf(Mark mark) {
    return pageMarks[static_cast<std::size_t>(mark)];
}

std::string classOf(const PageMark& mark) {
    return "class=\"" + std::string(mark.name) + "\"";
}

std::string textOf(const PageMark& mark) {
    return std::string(mark.sign) + " " + mark.text;
}

std::string noteOf(const AssessmentOutcome& outcome, const TimeWriter& times) {
    const std::size_t count = outcome.failures.size();
    if (count == 1) {
        return "fails " + times.interval(outcome.failures.front());
    }
    return count > 1 ? "fails in " + std::to_string(count) + " intervals, the first " +
                           times.interval(outcome.failures.front())
                     : "";
}

std::string tagsText(const AssessmentOutcome& outcome) {
    std::string tags;
    for (const std::string& tag : outcome.tags) {
        tags += (tags.empty() ? "tags: " : ", ") + tag;
    }
    return tags;
}

std::string fact(const std::string& name, const std::string& value) {
    return value.empty()
               ? ""
               : element("div", "", textElement("dt", "", name) + textElement("dd", "", value));
}

std::string factsOf(const AssessmentOutcome& outcome, const TimeWriter& times) {
    if (outcome.error) {
        return "";
    }
    const auto length = [](ExactTime time) { return durationText(time) + " s"; };
    std::string facts =
        fact("range", times.moment(outcome.from) + " to " + times.moment(outcome.to)) +
        fact("passed", length(outcome.passed)) + fact("failed", length(outcome.failed)) +
        fact("no result", length(outcome.open));
    if (outcome.leastRobustness) {
        facts += fact("robustness", robustnessText(outcome));
    }
    return element("dl", "class=\"facts\"",
                   facts + fact("robustness", errorText(outcome.robustnessError)));
}

// The lines of a cell, each on its own.
std::string cell(const std::vector<std::string>& lines) {
    std::string content;
    for (const std::string& line : lines) {
        content += (content.empty() ? "" : "<br>") + htmlText(line);
    }
    return element("td", "", content);
}

// The lines that a table shows of each interval, by its position.
template <class Why>
std::string intervalTable(const std::string& caption, const std::string& attributes,
                          const std::vector<TimeSpan>& spans, std::size_t most,
                          const TimeWriter& times, const Why& why) {
    if (spans.empty()) {
        return "";
    }
    std::string rows;
    const std::size_t shown = std::min(spans.size(), most);
    for (std::size_t i = 0; i < shown; ++i) {
        const TimeSpan& span = spans[i];
        rows += element("tr", "",
                        cell({times.moment(span.start)}) + cell({times.moment(span.end)}) +
                            cell({span.isInstant() ? "an instant" : span.length().text() + " s"}) +
                            cell(why(i)));
    }
    const std::string head = R"(<thead><tr><th scope="col">from</th><th scope="col">to</th>)"
                             R"(<th scope="col">length</th><th scope="col">why</th></tr></thead>)";
    const std::string more =
        shown < spans.size()
            ? textElement("p", "class=\"more\"", moreIntervalsText(spans.size() - shown))
            : "";
    return element("table", attributes,
                   textElement("caption", "", caption) + head + element("tbody", "", rows)) +
           more;
}

std::string zoneText(const RecordingOutcome& recording) {
    const auto& clock = recording.times.clock;
    return clock ? "dates in " + clock->zoneName() : "";
}

class Page {
public:
    Page(const AssessmentFile& file, const RunOutcome& run, const HtmlStyle& style)
        : file_(file), run_(run), style_(style) {}

    void addPlots(const RecordingDrawing& drawing) { drawings_[drawing.recording] = &drawing; }
    void leaveOutPlots(std::size_t recording) {
        drawings_.erase(recording);
        ++recordingsWithoutPlots_;
    }

    // What stands before the data of the plots, and behind them.
    std::string begin() const {
        return "<!doctype html>\n<html lang=\"en\">\n" + element("head", "", head()) + "<body>" +
               header() + element("main", "", overview() + recordings());
    }
    static std::string end() {
        return element("script", "", std::string(reportScript.text)) + "</body>\n</html>\n";
    }

private:
    std::string title() const { return run_.title.empty() ? run_.file : run_.title; }

    std::string head() const {
        const std::string policy = "default-src 'none'; script-src 'sha256-" +
                                   base64(reportScript.hash) + "'; style-src 'sha256-" +
                                   base64(reportStyle.hash) + "'";
        return "<meta charset=\"utf-8\">\n<meta http-equiv=\"Content-Security-Policy\" content=\"" +
               policy +
               "\">\n<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n" +
               textElement("title", "", title()) +
               element("style", "", std::string(reportStyle.text));
    }

    std::string header() const {
        std::string facts = run_.file;
        for (const std::string& more : {style_.program, style_.date}) {
            facts += more.empty() ? "" : ", " + more;
        }
        if (recordingsWithoutPlots_ > 0) {
            facts += ", " + std::to_string(recordingsWithoutPlots_) +
                     (recordingsWithoutPlots_ == 1 ? " recording" : " recordings") +
                     " without plots: they do not fit into " +
                     numberText(static_cast<double>(style_.mostBytes) / 1e6) + " MB";
        }
        const std::string values = parametersText(run_.parameters);
        const VerdictCounts counts = countVerdicts(run_);
        std::string items;
        for (const auto& [mark, count] : {std::pair(pageMarkOf(Mark::Failed), counts.failed),
                                          std::pair(pageMarkOf(Mark::Error), counts.errors),
                                          std::pair(pageMarkOf(Mark::Warned), counts.warnings),
                                          std::pair(pageMarkOf(Mark::NoResult), counts.noResult),
                                          std::pair(pageMarkOf(Mark::Open), counts.open),
                                          std::pair(pageMarkOf(Mark::Informed), counts.infos),
                                          std::pair(pageMarkOf(Mark::Passed), counts.passed)}) {
            if (count > 0) {
                items += textElement(
                    "li", classOf(mark),
                    std::string(mark.sign) + " " + std::to_string(count) + " " + mark.text);
            }
        }
        return element(
            "header", "",
            textElement("h1", "", title()) + textElement("p", "class=\"facts\"", facts) +
                textElement("p", "class=\"facts\"", values.empty() ? "" : "parameters: " + values) +
                element("ul", "class=\"counts\"", items));
    }

    static std::string id(std::size_t recording) { return "r" + std::to_string(recording + 1); }
    static std::string id(std::size_t recording, std::size_t assessment) {
        return id(recording) + "a" + std::to_string(assessment + 1);
    }

    static std::string link(const std::string& target, const std::string& text) {
        return "<a href=\"#" + target + "\">" + htmlText(text) + "</a>";
    }

    std::string overview() const {
        std::string names = R"(<th scope="col">recording</th>)";
        std::size_t columns = 0;
        for (const RecordingOutcome& recording : run_.recordings) {
            if (!recording.error) {
                for (const AssessmentOutcome& outcome : recording.assessments) {
                    names += R"(<th scope="col"><span>)" + htmlText(outcome.name) + "</span></th>";
                }
                columns = recording.assessments.size();
                break;
            }
        }
        std::string rows;
        for (std::size_t i = 0; i < run_.recordings.size(); ++i) {
            rows += matrixRow(i, columns);
        }
        return element("section", R"(class="overview" aria-label="Overview")",
                       element("table", "class=\"matrix\"",
                               "<caption>Recordings and assessments</caption>" +
                                   element("thead", "", element("tr", "", names)) +
                                   element("tbody", "", rows)));
    }

    std::string matrixRow(std::size_t number, std::size_t columns) const {
        const RecordingOutcome& recording = run_.recordings[number];
        std::string cells = R"(<th scope="row">)" + link(id(number), recording.recording) + "</th>";
        if (recording.error) {
            cells += R"(<td class="ERROR" colspan=")" +
                     std::to_string(std::max<std::size_t>(columns, 1)) + "\">" +
                     link(id(number), textOf(pageMarkOf(Mark::Error))) + "</td>";
        }
        for (std::size_t i = 0; i < recording.assessments.size(); ++i) {
            const PageMark& mark = pageMarkOf(markOf(recording.assessments[i], run_.strict));
            cells += "<td " + classOf(mark) + ">" + link(id(number, i), textOf(mark)) + "</td>";
        }
        return element("tr", recording.error ? "class=\"ERROR\"" : "", cells);
    }

    std::string recordings() const {
        std::string sections;
        for (std::size_t i = 0; i < run_.recordings.size(); ++i) {
            const RecordingOutcome& recording = run_.recordings[i];
            std::string content =
                textElement("h2", "id=\"" + id(i) + "-name\"", recording.recording) +
                textElement("p", "class=\"facts\"", zoneText(recording)) +
                listElement("class=\"warnings\"", recording.warnings) +
                textElement("pre", "class=\"error\"", errorText(recording.error));
            for (std::size_t k = 0; k < recording.assessments.size(); ++k) {
                content += assessment(i, k);
            }
            sections += element(
                "section",
                R"(class="recording" id=")" + id(i) + R"(" aria-labelledby=")" + id(i) + "-name\"",
                content);
        }
        return sections;
    }

    // What is alone on its page is open.
    bool isOpen() const {
        return run_.recordings.size() == 1 && run_.recordings.front().assessments.size() == 1;
    }

    std::string assessment(std::size_t recording, std::size_t number) const {
        const AssessmentOutcome& outcome = run_.recordings[recording].assessments[number];
        const TimeWriter times(run_.recordings[recording].times.clock);
        const PageMark& mark = pageMarkOf(markOf(outcome, run_.strict));
        const std::string summary =
            element("summary", "",
                    textElement("h3", "", outcome.name) +
                        textElement("span", "class=\"verdict\"", textOf(mark)) +
                        textElement("span", "class=\"note\"", noteOf(outcome, times)));
        const auto noReason = std::vector<std::string>();
        const auto failure = [&](std::size_t i) {
            return i < outcome.explanations.size()
                       ? causeLines(outcome.explanations[i], mostCausesShown, times)
                       : noReason;
        };
        const auto openness = [&](std::size_t i) {
            std::vector<std::string> reasons;
            if (i < outcome.openReasons.size()) {
                for (const OpenReason& reason : outcome.openReasons[i]) {
                    reasons.push_back(reasonText(reason, times));
                }
            }
            return reasons;
        };
        const std::string rest =
            definitions(outcome) + textElement("pre", "class=\"error\"", errorText(outcome.error)) +
            textElement("p", "class=\"reason\"", outcome.reason) +
            textElement("p", "class=\"reason\"", neverTriggeredText(outcome)) +
            factsOf(outcome, times) + plots(recording, number) +
            intervalTable("Failing intervals", "class=\"intervals\"", outcome.failures,
                          style_.mostIntervals, times, failure) +
            intervalTable("Times without result", "class=\"intervals open\"", outcome.openSpans,
                          style_.mostIntervals, times, openness);
        // With scripts a browser reads noscript as one text, and so a page of thousands at once;
        // unfolding.js makes elements of it when the assessment is opened.
        return element("details",
                       "class=\"assessment " + std::string(mark.name) + "\" id=\"" +
                           id(recording, number) + "\"" + (isOpen() ? " open" : ""),
                       summary + textElement("p", "class=\"description\"", outcome.description) +
                           textElement("p", "class=\"tags\"", tagsText(outcome)) +
                           textElement("pre", "class=\"formula\"", outcome.formula) +
                           element("noscript", "", rest));
    }

    std::string definitions(const AssessmentOutcome& outcome) const {
        std::string list;
        for (const std::string& name : namesToRead(file_, {&file_.find(outcome.name)})) {
            const auto definition = file_.definitions.find(name);
            if (definition != file_.definitions.end()) {
                list += textElement("dt", "", name) +
                        element("dd", "",
                                "<code>" + htmlText(definition->second.formula.text()) + "</code>");
            }
        }
        return list.empty() ? "" : element("dl", "class=\"definitions\"", list);
    }

    std::string plots(std::size_t recording, std::size_t number) const {
        const auto drawing = drawings_.find(recording);
        return drawing != drawings_.end() && drawing->second->assessments[number]
                   ? R"(<div class="plots" data-recording=")" + std::to_string(recording + 1) +
                         "\" data-assessment=\"" + std::to_string(number) + "\"></div>\n"
                   : "";
    }

    const AssessmentFile& file_;
    const RunOutcome& run_;
    const HtmlStyle& style_;
    std::map<std::size_t, const RecordingDrawing*> drawings_;
    std::size_t recordingsWithoutPlots_ = 0;
};

// The data of each recording that is drawn, as an element of the page.
using Islands = std::map<std::size_t, std::string>;

Islands islandsOf(const RunOutcome& run, const std::vector<RecordingDrawing>& drawings,
                  std::size_t mostExplained) {
    Islands islands;
    for (const RecordingDrawing& drawing : drawings) {
        islands[drawing.recording] = element(
            "script",
            R"(type="application/json" id="data-)" + std::to_string(drawing.recording + 1) + "\"",
            drawingIsland(drawing, run.recordings[drawing.recording], mostExplained));
    }
    return islands;
}

std::size_t sizeOf(const Islands& islands) {
    return std::accumulate(
        islands.begin(), islands.end(), std::size_t{0},
        [](std::size_t sum, const auto& island) { return sum + island.second.size(); });
}

std::vector<RecordingDrawing> thinnedTo(std::size_t buckets,
                                        const std::vector<RecordingDrawing>& drawings) {
    const Thinning thinning{buckets, 4 * buckets, {}, 0};
    std::vector<RecordingDrawing> all;
    for (const RecordingDrawing& drawing : drawings) {
        all.push_back({drawing.recording, drawing.timeline, {}, drawing.assessments});
        for (const SignalDrawing& signal : drawing.signals) {
            all.back().signals.push_back(thinned(signal, thinning));
        }
    }
    return all;
}

// Thinned as far as that helps, and then without the largest ones.
Islands fittingIslands(const RunOutcome& run, const std::vector<RecordingDrawing>& drawings,
                       std::size_t mostExplained, std::size_t mostBytes) {
    Islands islands = islandsOf(run, drawings, mostExplained);
    constexpr std::size_t fewestBuckets = 8;
    for (std::size_t buckets = 1000; sizeOf(islands) > mostBytes && buckets >= fewestBuckets;
         buckets /= 2) {
        islands = islandsOf(run, thinnedTo(buckets, drawings), mostExplained);
    }
    while (sizeOf(islands) > mostBytes) {
        islands.erase(std::max_element(
            islands.begin(), islands.end(),
            [](const auto& a, const auto& b) { return a.second.size() < b.second.size(); }));
    }
    return islands;
}

}  // namespace

std::string htmlReport(const AssessmentFile& file, const RunOutcome& run,
                       const std::vector<RecordingDrawing>& drawings, const HtmlStyle& style) {
    Page page(file, run, style);
    for (const RecordingDrawing& drawing : drawings) {
        page.addPlots(drawing);
    }
    const std::size_t tables = page.begin().size() + page.end().size();
    const Islands islands = fittingIslands(run, drawings, style.mostIntervals,
                                           style.mostBytes - std::min(style.mostBytes, tables));
    for (const RecordingDrawing& drawing : drawings) {
        if (!islands.contains(drawing.recording)) {
            page.leaveOutPlots(drawing.recording);
        }
    }
    std::string text = page.begin();
    for (const auto& [recording, island] : islands) {
        text += island;
    }
    return text + page.end();
}

}  // namespace vorm::evaluation
