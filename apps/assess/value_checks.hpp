#pragma once

#include <functional>
#include <string>
#include <vector>

namespace assess {

/// Tells of the text of a value what is wrong with it, or nothing.
using ValueCheck = std::function<std::string(const std::string&)>;

ValueCheck wholeNumber(int least, int most);

ValueCheck number(double least, double most);

/// What is wrong with a text that is no finite number of seconds from 0 on.
std::string secondsProblem(const std::string& text);

/// What is wrong with a text that is no name with a value behind `=`.
std::string settingProblem(const std::string& text);

std::string pathProblem(const std::string& text);

}  // namespace assess
