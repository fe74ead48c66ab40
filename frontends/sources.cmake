target_sources(
  zuSaHpi_util_objects
  PRIVATE frontends/entry_number.cpp
          frontends/evtlog_command.cpp
          frontends/hex_decode.cpp
          frontends/log_print.cpp
          frontends/message_formats.cpp
          frontends/request.cpp
          frontends/usage_text.cpp)
