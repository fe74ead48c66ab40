target_sources(
  zuSaHpi_util_objects
  PRIVATE eventlog/add.cpp
          eventlog/entry_io.cpp
          eventlog/failure.cpp
          eventlog/lock.cpp
          eventlog/log_file.cpp
          eventlog/log_operations.cpp
          eventlog/recovery.cpp
          eventlog/remove.cpp
          eventlog/retrieval.cpp
          eventlog/startup.cpp
          eventlog/store_state.cpp
          eventlog/transaction.cpp)
