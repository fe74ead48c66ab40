// Calls a printer and keeps what it printed and returned.
#pragma once

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
