# The files of a Linux installation, and the Debian package. Included by CMakeLists.txt.
include(GNUInstallDirs)
set(linux ${CMAKE_CURRENT_SOURCE_DIR}/linux)
set(made ${CMAKE_CURRENT_BINARY_DIR})
set(doc ${CMAKE_INSTALL_DATAROOTDIR}/doc/sondrix)

set(SONDRIX_MAINTAINER "The sondrix authors <authors@sondrix.example>" CACHE STRING "Who made the package")
execute_process(COMMAND date -R -u -d ${SONDRIX_DATE} OUTPUT_VARIABLE SONDRIX_DEBIAN_DATE
                OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)

# packed(FILE COPY): COPY is FILE packed by gzip, without name and time.
function(packed file copy)
  execute_process(COMMAND gzip -9n INPUT_FILE ${file} OUTPUT_FILE ${made}/${copy} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# Who only converts installs nothing of the charts: a package of its own.
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME sondrix)
install(TARGETS ${converters} RUNTIME)
set(pages sondrix-batch.1)
configure_file(${linux}/sondrix-batch.1.in ${made}/sondrix-batch.1 @ONLY)
configure_file(${linux}/sondrix.1.in ${made}/sondrix.1 @ONLY)
configure_file(${linux}/sondrix.metainfo.xml.in ${made}/sondrix.metainfo.xml @ONLY)
configure_file(${linux}/sondrix.desktop.in ${made}/sondrix.desktop @ONLY)
configure_file(${linux}/sondrix-mime.xml.in ${made}/sondrix-mime.xml @ONLY)
configure_file(${linux}/changelog.Debian.in ${made}/changelog.Debian @ONLY)

# add_completion(COMMAND COMPONENT PATTERNS ALTERNATIVES): the sources that are offered, as patterns of bash and as
# endings for zsh.
function(add_completion SONDRIX_COMMAND component SONDRIX_PATTERNS SONDRIX_ALTERNATIVES)
  string(REPLACE - _ SONDRIX_FUNCTION ${SONDRIX_COMMAND})
  foreach(shell bash zsh)
    configure_file(${linux}/completion.${shell}.in ${made}/${SONDRIX_COMMAND}.${shell} @ONLY)
  endforeach()
  install(FILES ${made}/${SONDRIX_COMMAND}.bash RENAME ${SONDRIX_COMMAND} COMPONENT ${component}
          DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/bash-completion/completions)
  install(FILES ${made}/${SONDRIX_COMMAND}.zsh RENAME _${SONDRIX_COMMAND} COMPONENT ${component}
          DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/zsh/vendor-completions)
endfunction()
add_completion(sondrix-batch sondrix "${SONDRIX_PATTERNS}" "${SONDRIX_ALTERNATIVES}")

if(TARGET sondrix)
  list(APPEND pages sondrix.1)
  install(FILES ${made}/sondrix.desktop DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/applications)
  install(FILES ${made}/sondrix.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/metainfo)
  install(FILES ${made}/sondrix-mime.xml DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/mime/packages RENAME sondrix.xml)

  # The window's own drawing as files, beside the SVG.
  set(icons ${CMAKE_INSTALL_DATAROOTDIR}/icons/hicolor)
  install(FILES ${linux}/sondrix.svg DESTINATION ${icons}/scalable/apps)
  add_executable(save-icon linux/save_icon.cpp)
  target_link_libraries(save-icon PRIVATE sondrix_desktop_lib)
  set(quiet QT_QPA_PLATFORM=offscreen QT_LOGGING_RULES=default.warning=false ASAN_OPTIONS=detect_leaks=0)
  foreach(size 48 128 256)
    set(icon ${made}/sondrix-${size}.png)
    add_custom_command(OUTPUT ${icon} COMMAND ${CMAKE_COMMAND} -E env ${quiet} $<TARGET_FILE:save-icon>
                                              ${size} ${icon} DEPENDS save-icon VERBATIM)
    list(APPEND pngs ${icon})
    install(FILES ${icon} DESTINATION ${icons}/${size}x${size}/apps RENAME sondrix.png)
  endforeach()
  add_custom_target(icons ALL DEPENDS ${pngs})
endif()
foreach(page ${pages})
  packed(${made}/${page} ${page}.gz)
  install(FILES ${made}/${page}.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endforeach()

packed(${PROJECT_SOURCE_DIR}/CHANGELOG.md changelog.gz)
packed(${made}/changelog.Debian changelog.Debian.gz)
install(FILES ${linux}/copyright ${made}/changelog.gz ${made}/changelog.Debian.gz ${PROJECT_SOURCE_DIR}/README.md
        DESTINATION ${doc})
install(FILES ${PROJECT_SOURCE_DIR}/docs/formats.md DESTINATION ${doc}/docs)

if(TARGET sondrix-chart)
  install(TARGETS sondrix-chart RUNTIME COMPONENT chart)
  install(TARGETS sondrix-gis LIBRARY DESTINATION lib/sondrix COMPONENT chart)
  configure_file(${linux}/sondrix-chart.1.in ${made}/sondrix-chart.1 @ONLY)
  packed(${made}/sondrix-chart.1 sondrix-chart.1.gz)
  install(FILES ${made}/sondrix-chart.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT chart)
  install(FILES ${linux}/copyright ${made}/changelog.gz ${made}/changelog.Debian.gz DESTINATION ${doc}-chart
          COMPONENT chart)
  add_completion(sondrix-chart chart "*" "*")
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL sondrix)
set(CPACK_DEBIAN_SONDRIX_PACKAGE_NAME sondrix)
if(TARGET sondrix-chart)
  list(APPEND CPACK_COMPONENTS_ALL chart)
  set(CPACK_DEBIAN_CHART_PACKAGE_NAME sondrix-chart)
endif()
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                                                WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${SONDRIX_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Nothing links these: letters to write with, the way to a Wayland screen, the toolkit's words in other languages.
set(CPACK_DEBIAN_SONDRIX_PACKAGE_RECOMMENDS "fonts-dejavu-core, qt6-wayland, qt6-translations-l10n")
# One summary for both would be wrong for one of them: each description begins with its own.
set(CPACK_DEBIAN_SONDRIX_DESCRIPTION
    "${CPACK_PACKAGE_DESCRIPTION_SUMMARY}
Sondrix converts what a fish-finder recorded (SL2, SL3) into depth points
and tracks for mapping tools: it reads an echogram frame by frame, works out
where the transducer was, and writes one line for each sounding. It looks for
the bottom a second time in the echo, crops recordings, and thins tables of
soundings and NMEA logs down to the points that a chart needs.
.
It comes with a window (sondrix) and with a program for the command line
(sondrix-batch).")
set(CPACK_DEBIAN_CHART_PACKAGE_RECOMMENDS tzdata)
set(CPACK_DEBIAN_CHART_DESCRIPTION
    "depth charts from the soundings of many trips
Sondrix-chart reads what fish-finders, loggers and apps recorded on any
number of trips (SL2, SL3, NMEA 0183, GPX, tables of soundings), marks what a
sounder told wrongly, as lost bottom, spikes and missing fixes, and makes a
chart of the rest for other programs: a grid of depths with its uncertainty,
contours and depth areas, beside the soundings as a table, as tracks, as plain
coordinates in a projection, or in a GeoPackage with all of it.")
unset(CPACK_PACKAGE_DESCRIPTION_SUMMARY)
