// A configuration tree as text, to compare whole trees in tests.
#pragma once

#include <string>

#include "zuSaHpi_util.h"

namespace config_tree {

// One line for each node, two blanks deeper for each level: "line: keyword code value", the value a
// number, or for strings (Filename, unknown keywords) their length and the characters in quotes.
std::string textOf(const ConfigNode *first);

// Adds a test failure for every link that is wrong and every value that the library must not see.
void expectSound(const ConfigNode *first);

} // namespace config_tree
