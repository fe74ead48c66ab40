// A file that has its name only when all of it is on the disk: nobody ever reads half of it.
#pragma once

#include <cstddef>
#include <cstdio>
#include <string>

#include <sys/stat.h>

namespace zusahpi::evtlogctl {

// A file without a name, or, where the file system has none such, under another name beside its
// own. It is gone unless it got its name; with another name, not when the process is killed. Every
// function throws Failure when the system refuses.
class NewFile {
  public:
    explicit NewFile(const std::string &name);
    ~NewFile();
    NewFile(const NewFile &) = delete;
    NewFile &operator=(const NewFile &) = delete;

    void write(const void *bytes, std::size_t count);

    // Gives it the name, which no other file may have, and the owner and rights of `other`.
    void keepAsNew(const struct stat &other);

    // Gives it the name; the file that has it is gone then, and its owner and rights are taken
    // over. Without one, rights are as for any file that is made.
    void keepInPlace();

  private:
    void require(bool success);
    void takeOver(const struct stat &other);
    void nameForNow();
    [[nodiscard]] bool link(const std::string &name);
    void syncFolder();

    std::string name_;
    std::string temporary_; // empty while it has no other name
    std::FILE *stream_ = nullptr;
};

} // namespace zusahpi::evtlogctl
