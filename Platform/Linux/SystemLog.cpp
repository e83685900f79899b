#include "Platform/Linux/SystemLog.h"

#include "Platform/Linux/FileDescriptor.h"

#include <systemd/sd-journal.h>

#include <poll.h>
#include <sys/socket.h>
#include <sys/uio.h>
#include <sys/un.h>
#include <syslog.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>

namespace platform::linux {
namespace {

constexpr std::string_view journalSocket = "/run/systemd/journal/socket";
/// A line of this length, with everything around it, goes into a pipe in one piece (PIPE_BUF).
constexpr std::size_t longestMessage = 3072;

bool isWritableNow(int descriptor) {
    pollfd question{.fd = descriptor, .events = POLLOUT, .revents = 0};
    return ::poll(&question, 1, 0) == 1 && (question.revents & POLLOUT) != 0;
}

/// Whether the journal is there and has room. Its library would wait for room.
bool isJournalReady() {
    const FileDescriptor descriptor{::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)};
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::ranges::copy(journalSocket, std::begin(address.sun_path));
    // The interface of sockets takes every kind of address by the same type.
    const auto* generic = reinterpret_cast<const sockaddr*>(&address); // NOLINT(*-reinterpret-cast)
    return descriptor && ::connect(descriptor.get(), generic, sizeof address) == 0 && isWritableNow(descriptor.get());
}

bool sendToJournal(std::string_view subsystem, std::string_view category, std::string_view message) {
    std::array<std::string, 5> fields{
        "PRIORITY=" + std::to_string(LOG_ERR),
        "SYSLOG_IDENTIFIER=tessel",
        "TESSEL_SUBSYSTEM=" + std::string(subsystem),
        "TESSEL_CATEGORY=" + std::string(category),
        "MESSAGE=" + std::string(message.substr(0, longestMessage)),
    };
    std::array<iovec, fields.size()> pieces{};
    std::ranges::transform(fields, pieces.begin(),
                           [](std::string& field) { return iovec{.iov_base = field.data(), .iov_len = field.size()}; });
    return isJournalReady() && ::sd_journal_sendv(pieces.data(), static_cast<int>(pieces.size())) == 0;
}

} // namespace

void SystemLog::error(std::string_view subsystem, std::string_view category, std::string_view message) {
    const bool isInJournal = sendToJournal(subsystem, category, message);
    if ((!isInJournal || ::isatty(STDERR_FILENO) == 1) && isWritableNow(STDERR_FILENO)) {
        const std::string text = line(category, message);
        [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, text.data(), text.size());
    }
}

std::string SystemLog::line(std::string_view category, std::string_view message) {
    std::string text = "tessel: [";
    text.append(category.substr(0, longestMessage / 4)).append("] ").append(message.substr(0, longestMessage));
    constexpr unsigned char firstPrintable = 0x20;
    constexpr unsigned char deletion = 0x7f;
    std::ranges::replace_if(
        text,
        [](char c) {
            const auto byte = static_cast<unsigned char>(c);
            return byte < firstPrintable || byte == deletion;
        },
        ' ');
    return text + "\n";
}

} // namespace platform::linux
