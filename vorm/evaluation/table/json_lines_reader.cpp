#include "json_lines_reader.hpp"

#include <vorm/evaluation/text/characters.hpp>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <utility>

namespace vorm::evaluation {

// Takes the values of the object's own keys as they stand in the text, so that no digit of a number
// is lost. What is nested in a value is passed over, and the value counts as missing.
class JsonLinesReader::ObjectHandler final : public nlohmann::json_sax<nlohmann::json> {
public:
    ObjectHandler(JsonLinesReader& reader, bool takesNewKeys)
        : reader_(reader), takesNewKeys_(takesNewKeys) {}

    bool null() override { return true; }
    bool boolean(bool value) override { return take(value ? "true" : "false", false); }
    bool number_integer(number_integer_t value) override {
        return take(std::to_string(value), false);
    }
    bool number_unsigned(number_unsigned_t value) override {
        return take(std::to_string(value), false);
    }
    bool number_float(number_float_t, const string_t& text) override { return take(text, false); }
    bool string(string_t& text) override { return take(std::move(text), true); }
    bool binary(binary_t&) override { return false; }
    bool start_object(std::size_t) override { return ++depth_ > 0; }
    bool end_object() override { return --depth_ >= 0; }
    // An array at the outermost level is no object; one depth more keeps its values out.
    bool start_array(std::size_t) override { return depth_++ > 0; }
    bool end_array() override { return --depth_ >= 0; }

    bool key(string_t& name) override {
        if (depth_ == 1) {
            auto& columns = reader_.columns_;
            const auto found = std::find(columns.begin(), columns.end(), name);
            slot_ = static_cast<std::size_t>(found - columns.begin());
            if (found == columns.end() && takesNewKeys_) {
                columns.push_back(name);
            }
        }
        return true;
    }

    bool parse_error(std::size_t position, const std::string&,
                     const nlohmann::detail::exception&) override {
        errorPosition = position;
        return false;
    }

    std::size_t errorPosition = 0;

private:
    bool take(std::string text, bool isText) {
        if (depth_ == 1 && slot_ < reader_.cells_.size()) {
            const std::string& kept = reader_.texts_.emplace_back(std::move(text));
            reader_.cells_[slot_] = {trimmed(kept), nullptr, isText};
        }
        return depth_ > 0;
    }

    JsonLinesReader& reader_;
    bool takesNewKeys_;
    int depth_ = 0;
    std::size_t slot_ = 0;
};

JsonLinesReader::JsonLinesReader(std::string path, ByteWindow bytes)
    : RowReader(std::move(path), std::move(bytes)) {
    if (!goToLine()) {
        failAt({path_}, "is empty");
    }
    parse(true);
    isAhead_ = true;
}

bool JsonLinesReader::next() {
    if (!std::exchange(isAhead_, false) && !goToLine()) {
        return false;
    }
    parse(false);
    return true;
}

bool JsonLinesReader::goToLine() {
    for (;;) {
        bytes_.consume(lineSize_);
        ++line_;
        const auto line = bytes_.line();
        if (!line) {
            failAt({path_, line_}, "the line is too long",
                   "each object stands on a line of its own");
        }
        lineSize_ = line->size();
        if (line->empty()) {
            return false;
        }
        if (line->find_first_not_of(" \t\r\n") != std::string_view::npos) {
            return true;
        }
    }
}

void JsonLinesReader::parse(bool takesNewKeys) {
    texts_.clear();
    cells_.assign(columns_.size(), {});
    ObjectHandler handler(*this, takesNewKeys);
    if (!nlohmann::json::sax_parse(text(), &handler)) {
        failAt({path_, line_, handler.errorPosition}, "this line is no JSON object",
               "each line is one object, such as {\"name\": \"speed\", \"value\": 1, "
               "\"timestamp\": 0}");
    }
}

}  // namespace vorm::evaluation
