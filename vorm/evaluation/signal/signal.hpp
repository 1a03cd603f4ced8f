#pragma once

#include <vorm/assessments/facade/timed_trace.hpp>
#include <vorm/evaluation/signal/signal_type.hpp>

#include <boost/uuid/uuid.hpp>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vorm::evaluation {

/// What is known of a quantity whose recording has holes: the pieces between the holes in time
/// order. Each is known from its first sample to its lastKnownTime, both included, and begins after
/// the one before it ends. A quantity that is known nowhere has no piece; a constant has one.
using TracePieces = std::vector<assessments::TimedTrace>;

/// Pieces that several owners read. Never null.
using SharedPieces = std::shared_ptr<const TracePieces>;

/// One recorded quantity.
struct Signal {
    std::string name;
    SignalType type;
    std::string unit;  ///< of its values, for display; or empty
    SharedPieces pieces;
};

/// The identity of the signal of that name in formulas: a UUID of version 5, so that equal names
/// are the same signal in every formula and in every run.
boost::uuids::uuid signalId(std::string_view name);

}  // namespace vorm::evaluation
