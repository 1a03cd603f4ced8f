#include "nearest_names.hpp"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <utility>

namespace vorm::evaluation {
namespace {

// Longer names are not compared: nobody misspells them by hand, and the cost is a product.
constexpr std::size_t longestCompared = 100;
constexpr std::size_t mostSuggestions = 3;

// Deletions, insertions, replacements and swaps of neighbours, none of them within another.
std::size_t editDistance(std::string_view a, std::string_view b) {
    std::vector<std::vector<std::size_t>> distance(a.size() + 1,
                                                   std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i <= a.size(); ++i) {
        for (std::size_t j = 0; j <= b.size(); ++j) {
            if (i == 0 || j == 0) {
                distance[i][j] = i + j;
                continue;
            }
            const std::size_t replaced = distance[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            distance[i][j] = std::min({distance[i - 1][j] + 1, distance[i][j - 1] + 1, replaced});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                distance[i][j] = std::min(distance[i][j], distance[i - 2][j - 2] + 1);
            }
        }
    }
    return distance[a.size()][b.size()];
}

std::string lettersAndDigits(std::string_view name) {
    std::string letters;
    for (const char c : name) {
        if (c != ' ' && c != '_' && c != '.') {
            letters += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        }
    }
    return letters;
}

std::string joined(const std::vector<std::string>& texts, const char* lastSeparator) {
    std::string list;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        list += i == 0 ? "" : i + 1 == texts.size() ? lastSeparator : ", ";
        list += texts[i];
    }
    return list;
}

std::vector<std::string> quoted(std::vector<std::string> names) {
    for (std::string& name : names) {
        name.insert(0, 1, '\'').append(1, '\'');
    }
    return names;
}

// So many names, of which at least as many as are shown are there.
std::string listedUpTo(std::size_t most, std::size_t count, const std::vector<std::string>& names) {
    if (count <= most) {
        return listed(quoted(names));
    }
    std::vector<std::string> shown =
        quoted({names.begin(), names.begin() + static_cast<std::ptrdiff_t>(most - 1)});
    shown.push_back(std::to_string(count - shown.size()) + " more");
    return listed(shown);
}

}  // namespace

std::vector<std::string> nearestNames(std::string_view name,
                                      const std::vector<std::string>& candidates) {
    const std::string letters = lettersAndDigits(name);
    std::vector<std::pair<std::size_t, std::string>> near;
    for (const std::string& candidate : candidates) {
        if (std::max(name.size(), candidate.size()) > longestCompared || candidate == name) {
            continue;
        }
        const std::size_t distance = editDistance(letters, lettersAndDigits(candidate));
        // A third of the letters may differ; of a single letter none.
        if (distance <= letters.size() / 3 || (distance == 1 && letters.size() > 1)) {
            near.emplace_back(distance, candidate);
        }
    }
    std::stable_sort(near.begin(), near.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::string> names;
    for (std::size_t i = 0; i < std::min(near.size(), mostSuggestions); ++i) {
        names.push_back(near[i].second);
    }
    return names;
}

std::string suggestion(std::string_view name, const std::vector<std::string>& candidates) {
    const std::vector<std::string> near = nearestNames(name, candidates);
    return near.empty() ? "" : "did you mean " + joined(quoted(near), " or ") + "?";
}

std::string listed(const std::vector<std::string>& names) {
    return joined(names, " and ");
}

std::string quotedList(const std::vector<std::string>& names, std::size_t most) {
    return listedUpTo(most, names.size(), names);
}

std::string quotedListOf(std::size_t count, const std::vector<std::string>& first) {
    return listedUpTo(mostNamesInList, count, first);
}

}  // namespace vorm::evaluation
