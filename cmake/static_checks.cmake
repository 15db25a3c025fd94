# For scripts/check-static, whose build folder is configured with CMAKE_UNITY_BUILD: the checker reads the sources of a
# target as one, so that it goes through the standard library's headers once for each target and not for each source.
# Names of the same spelling in two sources meet there; one of the two stays out, to be checked by itself.
foreach(alone
    sondrix_jobs:src/jobs/job_csv.cpp
    sondrix_jobs:src/jobs/job_log.cpp
    sondrix_app:src/app/language.cpp
    sondrix_desktop_lib:src/app/desktop/run_panel.cpp
    sondrix_samples:samples/lake.cpp
    sondrix_samples:samples/text_export.cpp
    sondrix_samples:samples/three_column.cpp
    sondrix_nmea_reader:src/sounders/nmea/nmea_delta.cpp
    sondrix_survey:src/survey/far_places.cpp
    sondrix_survey:src/survey/parts.cpp
    sondrix_survey:src/survey/track_pieces.cpp
    sondrix_chart:src/chart/cross_validation.cpp
    sondrix_exports:src/exports/gpx.cpp
    sondrix_exports:src/exports/layer_styles.cpp
    jobs_test:tests/jobs/job_mp_test.cpp)
  string(REGEX MATCH "^([^:]+):(.+)$" parts ${alone})
  if(TARGET ${CMAKE_MATCH_1})
    set_source_files_properties(${PROJECT_SOURCE_DIR}/${CMAKE_MATCH_2} TARGET_DIRECTORY ${CMAKE_MATCH_1}
                                PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
  endif()
endforeach()
