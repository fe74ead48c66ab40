// Names of files.
#pragma once

#include <filesystem>
#include <string>
#include <system_error>

namespace zusahpi::evtlogctl {

// The folder that the name of a file lies in.
[[nodiscard]] inline std::string folderOf(const std::string &path) {
    const std::string folder = std::filesystem::path(path).parent_path().string();
    return folder.empty() ? "." : folder;
}

// The name of what symbolic links lead to; of a file that is not there the name as it is.
[[nodiscard]] inline std::string withoutLinks(const std::string &path) {
    std::error_code error;
    const auto real = std::filesystem::canonical(path, error);
    return error ? path : real.string();
}

} // namespace zusahpi::evtlogctl
