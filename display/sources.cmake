target_sources(
  zuSaHpi_util_objects
  PRIVATE display/bit_flags.cpp
          display/condition.cpp
          display/control_record.cpp
          display/display_form.cpp
          display/entity_path.cpp
          display/event.cpp
          display/event_log_entry.cpp
          display/event_state.cpp
          display/rdr.cpp
          display/rpt_entry.cpp
          display/sensor_event.cpp
          display/sensor_reading.cpp
          display/sensor_record.cpp
          display/text_buffer.cpp
          display/text_control.cpp
          display/value.cpp)
