// The page of the report, without its data. The definitions are made from the files in the folder
// report/ when the tool is built.
#pragma once

#include <string_view>

namespace zusahpi::evtlogctl {

// The page is pageBegin, the data as JSON without the character '<', pageEnd.
extern const std::string_view pageBegin;
extern const std::string_view pageEnd;

} // namespace zusahpi::evtlogctl
