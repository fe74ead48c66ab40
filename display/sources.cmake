target_sources(
  zuSaHpi_util_objects
  PRIVATE display/bit_flags.cpp display/display_form.cpp display/entity_path.cpp
          display/event_state.cpp display/text_buffer.cpp display/value.cpp)
