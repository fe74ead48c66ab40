// Checked input and output of whole texts.
#include "tools/evtlogctl/output.h"

#include <array>
#include <cerrno>
#include <memory>

#include "tools/evtlogctl/failure.h"

namespace zusahpi::evtlogctl {

namespace {

[[noreturn]] void refuse(std::string_view name) {
    if (errno == EPIPE) { // whoever read it has had enough: that needs no word
        throw Failure(Status::findings, "");
    }
    fail(Status::systemRefused, "{} cannot be written: {}; check the disk", name, systemError());
}

} // namespace

void writeAll(std::FILE *to, std::string_view bytes, std::string_view name) {
    // cppcheck-suppress ctunullpointer ; a caller without a stream does not come back from fail()
    if (std::fwrite(bytes.data(), 1, bytes.size(), to) != bytes.size()) {
        refuse(name);
    }
}

void flushAll(std::FILE *to, std::string_view name) {
    if (std::fflush(to) != 0 || std::ferror(to) != 0) {
        refuse(name);
    }
}

std::string readAll(const std::string &file) {
    const bool standard = file == "-";
    std::FILE *const stream = standard ? stdin : std::fopen(file.c_str(), "rbe");
    if (stream == nullptr) {
        fail(Status::systemRefused, "{} cannot be opened: {}; check the name and its permissions",
             file, systemError());
    }
    const std::unique_ptr<std::FILE, int (*)(std::FILE *)> owner(standard ? nullptr : stream,
                                                                 std::fclose);
    std::string bytes;
    std::array<char, 65536> buffer{};
    std::size_t count = 0;
    while ((count = std::fread(buffer.data(), 1, buffer.size(), stream)) > 0) {
        bytes.append(buffer.data(), count);
    }
    if (std::ferror(stream) != 0) {
        fail(Status::systemRefused, "{} cannot be read: {}; name a file of records",
             standard ? "standard input" : file, systemError());
    }
    return bytes;
}

} // namespace zusahpi::evtlogctl
