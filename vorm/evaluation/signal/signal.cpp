#include "signal.hpp"

#include <boost/uuid/name_generator_sha1.hpp>

namespace vorm::evaluation {

boost::uuids::uuid signalId(std::string_view name) {
    // The namespace of the names of signals: drawn once, never to change.
    static constexpr boost::uuids::uuid signalNames{{0x5b, 0x0e, 0x9d, 0x1c, 0x7a, 0x42, 0x4f, 0xd3,
                                                     0x9c, 0x61, 0x2e, 0x85, 0xb7, 0x30, 0xd4,
                                                     0x16}};
    return boost::uuids::name_generator_sha1(signalNames)(name.data(), name.size());
}

}  // namespace vorm::evaluation
