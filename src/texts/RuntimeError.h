#pragma once

#include <cstdint>
#include <exception>
#include <string>

namespace vardenix {

// The numbers that errors carry; users know them from the messages.
enum class ErrorNumber : int32_t {
    InvalidCall = 5,
    Overflow = 6,
    OutOfMemory = 7,
    SubscriptOutOfRange = 9,
    TypeMismatch = 13,
    BadFileName = 52,
    FileNotFound = 53,
    FileAlreadyOpen = 55,
    DeviceIo = 57,
    DiskFull = 61,
    InputPastEnd = 62,
    PermissionDenied = 70,
    PathFileAccess = 75,
    PathNotFound = 76,
    InvalidPicture = 481,
    Cancelled = 32755,
};

// The plain words of a number: "File not found" of 53.
const char* DescriptionOf(ErrorNumber number);

// The one exception of the logic. Description is the plain sentence of the number unless
// the thrower gives its own; Detail says which file or post, where, what was expected and
// found, and may be empty. Texts are UTF-8.
class RuntimeError : public std::exception {
public:
    explicit RuntimeError(ErrorNumber number, std::string detail = {});
    RuntimeError(ErrorNumber number, std::string description, std::string detail);

    ErrorNumber Number() const { return number_; }
    int32_t NumberValue() const { return static_cast<int32_t>(number_); }
    const std::string& Description() const { return description_; }
    const std::string& Detail() const { return detail_; }
    // Number, description and detail on one line, for logs and test output.
    const char* what() const noexcept override { return what_.c_str(); }

private:
    ErrorNumber number_;
    std::string description_;
    std::string detail_;
    std::string what_;
};

// The text of the report box: "Run-time error 'N':", an empty line, the description and,
// where there is one, the detail on a line of its own.
std::string ReportText(const RuntimeError& error);

// The text that a handler with a trap shows under "Error...": "ERROR number N", the
// description and, where there is one, the detail, on lines of their own.
std::string TrapText(const RuntimeError& error);

// What the operating system said (an errno value) as an error of the program; `doing`
// says what was tried on `path`, as in "writing".
[[noreturn]] void ThrowSystemError(int systemError, const std::string& doing,
                                   const std::string& path);

} // namespace vardenix
