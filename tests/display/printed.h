// Calls a printer and keeps what it printed and returned.
#pragma once

#include <cstddef>
#include <string>

#include "tests/support/test_mainlib.h"

struct Printed {
    std::string text;
    int result;
    int calls;
};

template <typename Printer>
Printed printedBy(const Printer &printer) {
    Printed printed{};
    const int callsBefore = test_mainlib::state().printCalls;
    printed.result = printer(test_mainlib::handleOf(printed.text));
    printed.calls = test_mainlib::state().printCalls - callsBefore;
    return printed;
}

// How long an indent may be at most so that a list of names, begun with `start`, has its first name
// on its own line. `textBehind` gives the text of a printer behind an indent.
template <typename TextBehind>
std::size_t longestIndentFor(const std::string &start, const TextBehind &textBehind) {
    std::size_t length = 0;
    while (textBehind(std::string(length, '-')).find(start + ": \n") == std::string::npos &&
           length < 100) {
        ++length;
    }
    return length - 1;
}
