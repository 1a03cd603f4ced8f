#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vorm::evaluation {

/// Those of the candidates that someone who wrote `name` may have meant, the nearest first, at most
/// three: a few insertions, deletions, replacements or swaps of neighbours away (Damerau, "A
/// technique for computer detection and correction of spelling errors", 1964), or equal but for
/// case, blanks, dots and underscores. Candidates of equal distance stay in their order.
std::vector<std::string> nearestNames(std::string_view name,
                                      const std::vector<std::string>& candidates);

/// `did you mean 'speed' or 'speed_limit'?`, or nothing where no candidate is near.
std::string suggestion(std::string_view name, const std::vector<std::string>& candidates);

/// `a, b and c`.
std::string listed(const std::vector<std::string>& names);

inline constexpr std::size_t mostNamesInList = 8;

/// `'a', 'b' and 'c'`; of more than `most` names the last ones are counted: `'a', 'b' and 7 more`.
std::string quotedList(const std::vector<std::string>& names, std::size_t most = mostNamesInList);

/// The same for so many names, of which the first ones are there: all, or mostNamesInList.
std::string quotedListOf(std::size_t count, const std::vector<std::string>& first);

}  // namespace vorm::evaluation
