// Reading the tables that the registry is compared with.

#include "tests/constants/tables.h"

#include <fstream>

std::vector<ExpectedConstant> expectedConstants() {
    std::ifstream file(ZUSAHPI_TEST_DATA "/constants/constants.tsv");
    std::vector<ExpectedConstant> rows;
    ExpectedConstant row{};
    std::uint32_t subType = 0;
    while (file >> row.name >> row.value >> row.type >> subType) {
        row.type |= subType << 24;
        rows.push_back(row);
    }
    return rows;
}

std::vector<ExpectedType> expectedTypes() {
    std::ifstream file(ZUSAHPI_TEST_DATA "/constants/types.tsv");
    std::vector<ExpectedType> rows;
    ExpectedType row{};
    while (file >> row.name >> row.id >> row.constants) {
        rows.push_back(row);
    }
    return rows;
}
