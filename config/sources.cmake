target_sources(
  zuSaHpi_util_objects
  PRIVATE config/event_log_conf.cpp config/line_text.cpp config/reading_text.cpp
          config/syslog_dump.cpp config/syslog_forward.cpp config/syslog_map.cpp
          config/syslog_map_conf.cpp)
