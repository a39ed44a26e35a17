target_sources(
  ravelinox_tests
  PRIVATE ${CMAKE_CURRENT_LIST_DIR}/import_calendar_test.cpp
          ${CMAKE_CURRENT_LIST_DIR}/import_csv_test.cpp
          ${CMAKE_CURRENT_LIST_DIR}/import_databases_test.cpp
          ${CMAKE_CURRENT_LIST_DIR}/import_feed_test.cpp
          ${CMAKE_CURRENT_LIST_DIR}/import_names_test.cpp
          ${CMAKE_CURRENT_LIST_DIR}/import_runs_test.cpp)
target_compile_definitions(
  ravelinox_tests PRIVATE RAVELINOX_EMPOLI_FEED="${PROJECT_SOURCE_DIR}/data/empoli/gtfs")
target_link_libraries(ravelinox_tests PRIVATE PkgConfig::libzip)
