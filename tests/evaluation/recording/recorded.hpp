#pragma once

// Recordings as literals: what a text is read as, written as one line a signal.

#include "support/choices.hpp"
#include "support/traces.hpp"

#include <vorm/evaluation/recording/recording_reading.hpp>
#include <vorm/evaluation/text/shortest_number.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vorm::evaluation::test {

using vorm::test::anyIndex;
using vorm::test::anyOf;

/// `speed: double 0:1 2:3 known 4`, with `/` between pieces and `linear` where it is. Times have a
/// plus where they are just after the time that is shown, and a minus just before it.
std::string textOf(const Signal& signal, const Timeline& timeline);

/// Signal by signal, a line each.
std::string textOf(const Recording& recording);

Recording read(const std::string& content, const RecordingLayout& layout = {},
               const ReadingOptions& options = {}, const std::string& path = "r.csv",
               std::size_t blockSize = ByteWindow::defaultBlockSize);

/// The message of the InputError that the call throws, or `no error`.
template <class Call>
std::string errorOf(const Call& call) {
    try {
        call();
    } catch (const InputError& error) {
        return error.what();
    }
    return "no error";
}

/// A layout that one function changed.
template <class Change>
RecordingLayout layoutWith(const Change& change) {
    RecordingLayout layout;
    change(layout);
    return layout;
}

SignalLayout declared(const std::string& name, const std::string& type = {});

RecordingLayout declaring(const std::vector<SignalLayout>& signals);

}  // namespace vorm::evaluation::test
