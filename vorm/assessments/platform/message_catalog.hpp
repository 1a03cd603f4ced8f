#pragma once

#include <vorm/assessments/export.hpp>
#include <vorm/assessments/platform/message_id.hpp>

#include <locale>
#include <memory>
#include <string>

namespace vorm::platform {

/// Turns message identifiers into text. The embedded catalog holds short English sentences; a
/// host with messages of its own installs another one.
class VORM_ASSESSMENTS_EXPORT MessageCatalog {
public:
    virtual ~MessageCatalog();

    /// The text for `id`, with its arguments in it, for readers in `locale`. Called while an
    /// exception is being built: what it throws is thrown in that exception's place.
    virtual std::u16string message(const MessageId& id, const std::locale& locale) const = 0;

    /// The catalog in force. Safe to call from any thread.
    static std::shared_ptr<const MessageCatalog> global();

    /// Makes `catalog` the one in force; a null pointer brings the embedded one back. Safe to call
    /// from any thread; messages that are being built go on with the catalog they started with.
    /// The one in force at the end of the process is not destroyed: failures can still need it.
    static void install(std::shared_ptr<const MessageCatalog> catalog);
};

}  // namespace vorm::platform
