#include "message_catalog.hpp"

#include <vorm/assessments/platform/installed_service.hpp>
#include <vorm/assessments/platform/utf.hpp>

#include <array>
#include <string_view>

namespace vorm::platform {
namespace {

struct Entry {
    std::string_view key;
    std::string_view text;
};

// {0} and {1} stand for the arguments.
constexpr std::array<Entry, 5> entries{{
    {"UnaryTypeError", "The operation is not defined for values of type '{0}'."},
    {"BinaryTypeError", "The operation is not defined for operands of types '{0}' and '{1}'."},
    {"ExpressionEvaluationError", "The evaluation of '{0}' failed."},
    {"ExpressionEvaluationInternalError", "The evaluation met an error: '{0}'."},
    {"TimeValueMustIncrease", "The time of each sample must be greater than the one before."},
}};

std::u16string argumentText(const MessageId::Argument& argument) {
    struct {
        std::u16string operator()(std::int64_t number) const {
            return toUtf16(std::to_string(number));
        }
        std::u16string operator()(const std::string& text) const { return toUtf16(text); }
        std::u16string operator()(const std::u16string& text) const { return text; }
    } const toText;
    return std::visit(toText, argument);
}

std::u16string fillIn(std::string_view text, const MessageId& id) {
    std::u16string filled;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '{') {
            filled += static_cast<char16_t>(text[i]);
            continue;
        }
        const auto index = static_cast<std::size_t>(text[i + 1] - '0');
        if (index < id.arguments.size()) {
            filled += argumentText(id.arguments[index]);
        }
        i += 2;
    }
    return filled;
}

// What is left to say of a message that the catalog does not know: its name and its arguments.
std::u16string unknownMessage(const MessageId& id) {
    std::u16string text = toUtf16(id.component + ":" + id.key);
    for (const MessageId::Argument& argument : id.arguments) {
        text += u" '" + argumentText(argument) + u"'";
    }
    return text;
}

class EmbeddedCatalog final : public MessageCatalog {
public:
    std::u16string message(const MessageId& id, const std::locale&) const override {
        if (id.component == "quillet:assessments") {
            for (const Entry& entry : entries) {
                if (entry.key == id.key) {
                    return fillIn(entry.text, id);
                }
            }
        }
        return unknownMessage(id);
    }
};

InstalledService<MessageCatalog>& installedCatalog() {
    return InstalledService<MessageCatalog>::instance<EmbeddedCatalog>();
}

}  // namespace

MessageCatalog::~MessageCatalog() = default;

std::shared_ptr<const MessageCatalog> MessageCatalog::global() {
    return installedCatalog().get();
}

void MessageCatalog::install(std::shared_ptr<const MessageCatalog> catalog) {
    installedCatalog().install(std::move(catalog));
}

}  // namespace vorm::platform
