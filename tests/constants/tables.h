// The registry's rows as the data files beside this one have them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct ExpectedConstant {
    std::string name;
    std::int64_t value;
    std::uint32_t type; // type key
};

struct ExpectedType {
    std::string name;
    std::uint32_t id;
    std::uint32_t constants;
};

std::vector<ExpectedConstant> expectedConstants();
std::vector<ExpectedType> expectedTypes();
