target_sources(zuSaHpi_util_objects PRIVATE util/clock.cpp)
