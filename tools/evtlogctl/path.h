// Names of files.
#pragma once

#include <filesystem>
#include <string>

namespace zusahpi::evtlogctl {

// The folder that the name of a file lies in.
[[nodiscard]] inline std::string folderOf(const std::string &path) {
    const std::string folder = std::filesystem::path(path).parent_path().string();
    return folder.empty() ? "." : folder;
}

} // namespace zusahpi::evtlogctl
