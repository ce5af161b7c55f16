#include "texts/RuntimeError.h"

#include <cerrno>
#include <cstring>

namespace vardenix {

const char* DescriptionOf(ErrorNumber number) {
    switch (number) {
    case ErrorNumber::InvalidCall:
        return "Invalid procedure call or argument";
    case ErrorNumber::Overflow:
        return "Overflow";
    case ErrorNumber::OutOfMemory:
        return "Out of memory";
    case ErrorNumber::SubscriptOutOfRange:
        return "Subscript out of range";
    case ErrorNumber::TypeMismatch:
        return "Type mismatch";
    case ErrorNumber::BadFileName:
        return "Bad file name or number";
    case ErrorNumber::FileNotFound:
        return "File not found";
    case ErrorNumber::FileAlreadyOpen:
        return "File already open";
    case ErrorNumber::DeviceIo:
        return "Device I/O error";
    case ErrorNumber::DiskFull:
        return "Disk full";
    case ErrorNumber::InputPastEnd:
        return "Input past end of file";
    case ErrorNumber::PermissionDenied:
        return "Permission denied";
    case ErrorNumber::PathFileAccess:
        return "Path/File access error";
    case ErrorNumber::PathNotFound:
        return "Path not found";
    case ErrorNumber::InvalidPicture:
        return "Invalid picture";
    case ErrorNumber::Cancelled:
        return "Cancel was selected.";
    }
    return "Application-defined or object-defined error";
}

RuntimeError::RuntimeError(ErrorNumber number, std::string detail)
    : RuntimeError(number, DescriptionOf(number), std::move(detail)) {}

RuntimeError::RuntimeError(ErrorNumber number, std::string description,
                           std::string detail)
    : number_(number), description_(std::move(description)), detail_(std::move(detail)) {
    what_ = "error " + std::to_string(NumberValue()) + ": " + description_;
    if (!detail_.empty())
        what_ += " (" + detail_ + ")";
}

namespace {

std::string WordsOf(const RuntimeError& error) {
    return error.Description() + (error.Detail().empty() ? "" : "\n" + error.Detail());
}

} // namespace

std::string ReportText(const RuntimeError& error) {
    return "Run-time error '" + std::to_string(error.NumberValue()) + "':\n\n" +
           WordsOf(error);
}

std::string TrapText(const RuntimeError& error) {
    return "ERROR number " + std::to_string(error.NumberValue()) + "\n" + WordsOf(error);
}

namespace {

ErrorNumber NumberOf(int systemError) {
    switch (systemError) {
    case ENOENT:
        return ErrorNumber::FileNotFound;
    case ENOTDIR:
        return ErrorNumber::PathNotFound;
    case EACCES:
    case EPERM:
        return ErrorNumber::PermissionDenied;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return ErrorNumber::DiskFull;
    case ENAMETOOLONG:
    case EINVAL:
        return ErrorNumber::BadFileName;
    case ENOMEM:
        return ErrorNumber::OutOfMemory;
    case EIO:
        return ErrorNumber::DeviceIo;
    default:
        return ErrorNumber::PathFileAccess; // EISDIR, EROFS, ETXTBSY and rarer ones
    }
}

} // namespace

void ThrowSystemError(int systemError, const std::string& doing,
                      const std::string& path) {
    throw RuntimeError(NumberOf(systemError),
                       doing + " " + path + ": " + std::strerror(systemError));
}

} // namespace vardenix
