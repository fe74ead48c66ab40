# Makes a C++ source of the report's page: page.html with style and script put in, cut in two where
# the data go. The page's security policy names style and script by their hashes, so that nothing
# else on the page can run.
#
# usage: cmake -D FOLDER=... -D OUTPUT=... -P embed.cmake

cmake_minimum_required(VERSION 3.25)

# The base64 form of a text of hexadecimal digits.
function(base64_of_hex hex result)
  set(alphabet "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/")
  set(text "")
  string(LENGTH "${hex}" length)
  # Three digits are twelve bits: two characters. A rest of one digit is padded with zeros.
  math(EXPR last "${length} - 1")
  foreach(begin RANGE 0 ${last} 3)
    string(SUBSTRING "${hex}00" ${begin} 3 digits)
    math(EXPR high "0x${digits} >> 6")
    math(EXPR low "0x${digits} & 63")
    string(SUBSTRING "${alphabet}" ${high} 1 first)
    string(SUBSTRING "${alphabet}" ${low} 1 second)
    string(APPEND text "${first}${second}")
  endforeach()
  set(${result} "${text}" PARENT_SCOPE)
endfunction()

# The hash of a text as a security policy has it. 256 bits are 64 digits: 22 pairs of characters,
# the last of them for one digit alone, and in base64 that is one character and a '='.
function(policy_hash text result)
  string(SHA256 hex "${text}")
  base64_of_hex("${hex}" base64)
  string(SUBSTRING "${base64}" 0 43 base64)
  set(${result} "${base64}=" PARENT_SCOPE)
endfunction()

# A file whose text is put into a C++ raw string and between tags of HTML.
function(read_piece name forbidden result)
  file(READ "${FOLDER}/${name}" text)
  foreach(each ")page\"" "${forbidden}")
    string(FIND "${text}" "${each}" place)
    if(NOT place EQUAL -1)
      message(FATAL_ERROR "${name} must not hold ${each}")
    endif()
  endforeach()
  set(${result} "${text}" PARENT_SCOPE)
endfunction()

read_piece(page.html "{{no such piece}}" page)
read_piece(page.css "</style" style)
read_piece(page.js "</script" script)
policy_hash("${style}" style_hash)
policy_hash("${script}" script_hash)

string(REPLACE "{{style-hash}}" "${style_hash}" page "${page}")
string(REPLACE "{{script-hash}}" "${script_hash}" page "${page}")
string(REPLACE "{{style}}" "${style}" page "${page}")
string(REPLACE "{{script}}" "${script}" page "${page}")

string(FIND "${page}" "{{data}}" cut)
if(cut EQUAL -1)
  message(FATAL_ERROR "page.html has no place for the data")
endif()
string(LENGTH "{{data}}" mark)
math(EXPR rest "${cut} + ${mark}")
string(SUBSTRING "${page}" 0 ${cut} begin)
string(SUBSTRING "${page}" ${rest} -1 end)

file(WRITE "${OUTPUT}" "// Made of page.html, page.css and page.js.
#include \"tools/evtlogctl/report_page.h\"

namespace zusahpi::evtlogctl {

const std::string_view pageBegin = R\"page(${begin})page\";
const std::string_view pageEnd = R\"page(${end})page\";

} // namespace zusahpi::evtlogctl
")
