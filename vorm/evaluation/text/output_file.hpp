#pragma once

#include <string>
#include <string_view>

namespace vorm::evaluation {

/// What to do where a file cannot be written for a cause that stays.
inline constexpr const char* anotherPath = "give another path";

/// Throws the InputError of what cannot be written, `cannot write 'report.json': No space left on
/// device`, for an error number of the operating system; `instead` is what to do where its cause
/// stays.
[[noreturn]] void failToWrite(const std::string& what, int error, const std::string& instead);

/// Writes all of a text to an open file. Throws as failToWrite does.
void writeAll(int descriptor, std::string_view content, const std::string& what,
              const std::string& instead);

/// A file that is written without a buffer: what has been written stays where the program dies, and
/// what could not be written is not tried again when there is room later.
class OutputFile {
public:
    enum class Start {
        New,    ///< nobody else's file is written to, whatever its name
        Empty,  ///< without what it held
        End,    ///< after what it holds
    };

    /// Opens the file; messages call it `name`. Throws InputError where that fails.
    OutputFile(std::string path, Start start, const std::string& name);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    OutputFile(OutputFile&& other) noexcept;
    OutputFile& operator=(OutputFile&&) = delete;
    ~OutputFile();

    /// Throws InputError where not all can be written; a plain file then has none of it.
    void write(std::string_view content);

    /// Throws InputError: some file systems tell only here that there is no room.
    void close();

private:
    void takeBack(std::size_t bytes) const;

    std::string path_;
    std::string name_;
    int descriptor_;
};

}  // namespace vorm::evaluation
