target_sources(
  zuSaHpi_util_objects
  PRIVATE util/clock.cpp
          util/hex_dump.cpp
          util/index.cpp
          util/return_codes.cpp
          util/signal_names.cpp
          util/time_errors.cpp)
