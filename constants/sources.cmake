target_sources(
  zuSaHpi_util_objects PRIVATE constants/constant_table.cpp constants/decimal.cpp
                               constants/lookup.cpp constants/type_table.cpp)
