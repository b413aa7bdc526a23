#include "app/output_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <utility>

#include "app/progress.h"
#include "app/user_error.h"

namespace calcora::app {

namespace {

constexpr std::size_t kBufferSize = 1 << 18;

/// The rights that a new file gets here, or those of the file that is replaced.
mode_t rightsFor(const std::string& target)
{
    struct stat present {};
    if (stat(target.c_str(), &present) == 0) return present.st_mode & 07777;
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

}  // namespace

OutputFile::OutputFile(const std::string& path) : path_(path), target_(path)
{
    namespace fs = std::filesystem;
    std::error_code error;
    const auto status = fs::status(path, error);
    if (fs::is_directory(status)) fail(EISDIR);
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        descriptor_ = open(path.c_str(), O_WRONLY | O_CLOEXEC);
        if (descriptor_ < 0) fail(errno);
        return;
    }
    if (fs::exists(status)) {
        // The file behind a symbolic link is replaced, not the link; a file that may not be written
        // is not replaced either.
        target_ = fs::canonical(path, error).string();
        if (error || access(target_.c_str(), W_OK) != 0) fail(error ? error.value() : errno);
    }
    const mode_t rights = rightsFor(target_);
    temporary_ = target_ + ".XXXXXX";
    descriptor_ = mkstemp(temporary_.data());
    if (descriptor_ < 0) {
        const int reason = errno;
        temporary_.clear();
        fail(reason);
    }
    if (fchmod(descriptor_, rights) != 0) {
        // Some file systems keep no rights; the file is good all the same.
    }
}

OutputFile::~OutputFile()
{
    if (descriptor_ >= 0) close(descriptor_);
    if (!temporary_.empty()) unlink(temporary_.c_str());
}

void OutputFile::write(std::string_view text)
{
    buffer_ += text;
    if (buffer_.size() < kBufferSize) return;
    if (Interrupt::isRaised()) throw Interrupted();
    flush();
}

void OutputFile::flush()
{
    const char* from = buffer_.data();
    std::size_t left = buffer_.size();
    while (left > 0) {
        const ssize_t done = ::write(descriptor_, from, left);
        if (done < 0 && errno == EINTR) continue;
        if (done < 0) fail(errno);
        from += done;
        left -= static_cast<std::size_t>(done);
    }
    buffer_.clear();
}

void OutputFile::commit()
{
    flush();
    const int closed = close(std::exchange(descriptor_, -1));
    if (closed != 0) fail(errno);
    if (temporary_.empty()) return;
    if (rename(temporary_.c_str(), target_.c_str()) != 0) fail(errno);
    temporary_.clear();
}

void OutputFile::fail(int error) const
{
    throw UserError(path_ + ": cannot be written: " + std::strerror(error));
}

}  // namespace calcora::app
