#include "Platform/Linux/PrivateFile.h"

#include "Platform/Linux/Descriptor.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace korvane::platform {
namespace {

std::string lastError()
{
    return std::error_code(errno, std::generic_category()).message();
}

bool writeAll(int descriptor, std::string_view contents)
{
    while (!contents.empty()) {
        const ssize_t written = ::write(descriptor, contents.data(), contents.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        contents.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

}  // namespace

std::optional<std::string> makePrivateDirectory(const std::filesystem::path &directory)
{
    std::filesystem::path made;
    for (const auto &part : directory) {
        made /= part;
        if (::mkdir(made.c_str(), 0700) != 0 && errno != EEXIST) {
            // Some systems refuse even if the directory exists. It is a failure only if the directory is really
            // missing.
            const std::string reason = lastError();
            std::error_code error;
            if (!std::filesystem::is_directory(made, error))
                return reason;
        }
    }
    std::error_code error;
    if (!std::filesystem::is_directory(directory, error))
        return std::error_code(ENOTDIR, std::generic_category()).message();
    return std::nullopt;
}

std::optional<std::string> replacePrivateFile(const std::filesystem::path &file, std::string_view contents)
{
    std::error_code error;
    std::filesystem::path target = std::filesystem::canonical(file, error);
    if (error)
        target = file;
    if (auto reason = makePrivateDirectory(target.parent_path()))
        return reason;

    std::string name = (target.parent_path() / ("." + target.filename().string() + ".XXXXXX")).string();
    std::string reason;
    {
        // The file is made for the owner only, under a name that did not exist before.
        const Descriptor temporary(::mkostemp(name.data(), O_CLOEXEC));
        if (!temporary)
            return lastError();
        if (!writeAll(temporary.get(), contents) || ::fsync(temporary.get()) != 0)
            reason = lastError();
    }
    if (reason.empty() && ::rename(name.c_str(), target.c_str()) != 0)
        reason = lastError();
    if (!reason.empty()) {
        ::unlink(name.c_str());
        return reason;
    }
    // The new name must be on the disk as well. Some file systems can't do this; the file is complete even then.
    const Descriptor directory(::open(target.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory)
        ::fsync(directory.get());
    return std::nullopt;
}

FileContents readFile(const std::filesystem::path &file, std::size_t largest)
{
    FileContents result;
    const Descriptor descriptor(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status {};
    if (!descriptor || ::fstat(descriptor.get(), &status) != 0) {
        result.outcome = errno == ENOENT ? FileContents::Outcome::missing : FileContents::Outcome::unreadable;
        result.reason = lastError();
        return result;
    }
    if (!S_ISREG(status.st_mode)) {
        result.reason = "not a regular file";
        return result;
    }
    if (status.st_size < 0 || static_cast<std::size_t>(status.st_size) > largest) {
        result.reason = "too large";
        return result;
    }
    // One byte more than the size: it shows whether the file has grown meanwhile.
    result.bytes.resize(static_cast<std::size_t>(status.st_size) + 1);
    std::size_t size = 0;
    while (size < result.bytes.size()) {
        const ssize_t count = ::read(descriptor.get(), result.bytes.data() + size, result.bytes.size() - size);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0) {
            result.reason = lastError();
            result.bytes.clear();
            return result;
        }
        if (count == 0)
            break;
        size += static_cast<std::size_t>(count);
    }
    result.bytes.resize(size);
    result.outcome = FileContents::Outcome::read;
    return result;
}

}  // namespace korvane::platform
