#pragma once

// Tells the samples of a column from the texts that stand for missing values.

#include <vorm/evaluation/signal/signal_type.hpp>
#include <vorm/evaluation/table/row_reader.hpp>

#include <optional>
#include <string>
#include <vector>

namespace vorm::evaluation {

/// A text such as `NA` or `-` is no sample of a column of numbers or bools, but a member like any
/// other of a column of texts. Which of both a column is, its first other value tells, if its type
/// is not declared: until then such texts are held back. Declared texts are never samples.
class MissingValues {
public:
    /// The declared texts outlive the object.
    MissingValues(const std::vector<std::string>& declared, const std::optional<SignalType>& type)
        : declared_(declared),
          content_(!type                  ? Content::NotKnown
                   : type->isEnumerated() ? Content::Texts
                                          : Content::Numbers) {}

    /// Whether the cell, which is not empty, is surely a sample, and none is held back.
    bool isSample(const Cell& cell) const {
        return content_ != Content::NotKnown &&
               ((declared_.empty() && !mayBeMissing(cell.text)) || !isMissing(cell));
    }

    /// Calls take(time, cell) for the cell, and before it for those that were held back; the cell
    /// is an empty one where it is no sample.
    template <class Take>
    void pass(double time, const Cell& cell, const Take& take) {
        if (content_ == Content::NotKnown) [[unlikely]] {
            passFirst(time, cell, take);
        } else {
            take(time, isMissing(cell) ? Cell() : cell);
        }
    }

    /// Calls take for what is still held back: nothing of it is a sample.
    template <class Take>
    void finish(const Take& take) {
        release(take, false);
    }

private:
    enum class Content { NotKnown, Numbers, Texts };

    struct Held {
        double time;
        std::string text;
    };

    // Whether a text that is not empty could stand for a missing number by itself. Without a branch
    // on the sign, which cannot be foretold of numbers.
    static bool mayBeMissing(std::string_view text) {
        const char first = text.front();
        return (first == 'n') | (first == 'N') | ((text.size() == 1) & (first == '-'));
    }

    bool isMissing(const Cell& cell) const {
        return (content_ == Content::Numbers && isMissingNumber(cell)) || isDeclared(cell);
    }

    template <class Take>
    void passFirst(double time, const Cell& cell, const Take& take) {
        if (cell.text.empty() || isDeclared(cell)) {
            take(time, Cell());
        } else if (isMissingNumber(cell)) {
            held_.push_back({time, std::string(cell.text)});
        } else {
            content_ = isOfTexts(cell) ? Content::Texts : Content::Numbers;
            release(take, content_ == Content::Texts);
            take(time, cell);
        }
    }

    template <class Take>
    void release(const Take& take, bool asSamples) {
        for (const Held& held : held_) {
            take(held.time, asSamples ? Cell{held.text} : Cell());
        }
        held_.clear();
    }

    bool isDeclared(const Cell& cell) const;
    static bool isMissingNumber(const Cell& cell);
    static bool isOfTexts(const Cell& first);

    const std::vector<std::string>& declared_;
    Content content_;
    std::vector<Held> held_;
};

}  // namespace vorm::evaluation
