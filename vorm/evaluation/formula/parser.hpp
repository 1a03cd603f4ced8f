#pragma once

// Reads the text of a formula by precedence climbing (Clarke, "The top-down parsing of
// expressions", 1986) over its words. For ParsedFormula.

#include <vorm/evaluation/formula/formula_parameter.hpp>
#include <vorm/evaluation/formula/spellings.hpp>
#include <vorm/evaluation/formula/syntax_tree.hpp>
#include <vorm/evaluation/formula/token.hpp>
#include <vorm/evaluation/time/time_unit.hpp>

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorm::evaluation {

class Parser {
public:
    /// The text and the parameters, null where there can be none, have to outlive the parser.
    Parser(std::string_view text, const FormulaParameters* parameters);

    /// The nodes of the formula. Throws FormulaError.
    SyntaxNodes nodes() &&;

private:
    class Level;

    // parser.cpp: operators between operands
    std::size_t implications();
    std::size_t expression(Precedence loosest);
    std::size_t extended(std::size_t left, const Spelling& infix);
    std::size_t chained(std::size_t comparison);
    std::size_t membership(std::size_t value);
    std::size_t joined(assessments::VORM_OP op, std::size_t left, std::size_t right);
    std::size_t copied(std::size_t operand);
    std::optional<Spelling> infix() const;
    std::size_t append(SyntaxNode node);

    // operand_parser.cpp: operands and operators before them
    std::size_t operand();
    std::size_t group();
    std::size_t prefixed(const Spelling& spelling);
    std::size_t appliedTo(SyntaxNode node, bool inBrackets);
    std::size_t crossing(SyntaxNode node);
    std::size_t call(const SyntaxNode& node);
    std::size_t leaf();
    std::size_t name();
    std::size_t heldSignal(SyntaxNode node);

    // literal_parser.cpp
    std::size_t conversion(SyntaxNode node);
    bool typedLiteral(SyntaxNode& node);
    std::optional<std::string> literalOfType(std::size_t valueType);
    std::string fixedPointType();
    std::optional<std::size_t> number();

    // interval_parser.cpp
    void window(SyntaxNode& node);
    void interval(SyntaxNode& node);
    WrittenTime endOfWindow(assessments::VORM_OP op);
    void distance(SyntaxNode& node);
    void printedDistance(SyntaxNode& node);
    WrittenTime time();
    WrittenTime timeOf(std::string_view digits, bool isNegative);
    static WrittenTime writtenTime(std::string_view digits, const std::optional<TimeUnit>& unit,
                                   bool isNegative);

    // parameter_parser.cpp
    const FormulaParameter& takeParameter();
    std::size_t parameter();
    std::optional<std::string> parameterOfType(std::size_t valueType);
    WrittenTime parameterTime(bool isNegative);
    [[noreturn]] void failAsNoTime(const FormulaParameter& parameter, const Token& where) const;

    // refused_words.cpp
    void refuseMissingOperator() const;
    [[noreturn]] void refuseOperand() const;
    [[noreturn]] void refuseName() const;
    [[noreturn]] void refuseWithoutTime(const Spelling& spelling) const;

    // token_reader.cpp
    const Token& next(std::size_t ahead = 0) const;
    Token take();
    bool takeIf(std::string_view word);
    void expectClosing(const Token& opening, std::string_view closing);
    std::string textOf(const Token& token) const;
    std::size_t beginOf(const Token& token) const;
    TextSpan spanOf(const Token& token) const;
    std::size_t endOfTaken() const;
    TextSpan spanFrom(const Token& first) const;
    [[noreturn]] void fail(const std::string& message, const Token& where,
                           std::string advice = {}) const;
    [[noreturn]] void expected(const std::string& what, std::string advice = {}) const;

    std::string_view text_;
    const FormulaParameters* parameters_;
    std::vector<Token> tokens_;
    std::size_t position_ = 0;
    std::size_t level_ = 0;
    SyntaxNodes nodes_;
};

/// Counts the brackets and operators that a part of the text is nested in while it lives.
class Parser::Level {
public:
    explicit Level(Parser& parser);
    ~Level() { --parser_.level_; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

private:
    Parser& parser_;
};

}  // namespace vorm::evaluation
