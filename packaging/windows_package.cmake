# The files of a Windows installation, all in one folder, and its packages: a zip and an installer. The Qt of the window
# and the plugins of that Qt are taken from the folder ship of the build folder. Included by CMakeLists.txt.
set(SONDRIX_SHIP ${CMAKE_BINARY_DIR}/ship CACHE PATH "Where the libraries of the window lie")
math(EXPR width "${CMAKE_SIZEOF_VOID_P} * 8")
set(texts ${CMAKE_CURRENT_BINARY_DIR}/texts)

install(TARGETS ${converters} RUNTIME DESTINATION .)
if(TARGET sondrix)
  install(DIRECTORY ${SONDRIX_SHIP}/ DESTINATION . FILES_MATCHING PATTERN "*.dll")
endif()

# Texts for an editor of Windows.
configure_file(windows_readme.txt.in ${texts}/readme.txt @ONLY NEWLINE_STYLE WIN32)
configure_file(${PROJECT_SOURCE_DIR}/LICENSE ${texts}/licence.txt @ONLY NEWLINE_STYLE WIN32)
configure_file(${PROJECT_SOURCE_DIR}/CHANGELOG.md ${texts}/changelog.txt @ONLY NEWLINE_STYLE WIN32)
set(licences cli11 json mingw)
if(TARGET sondrix)
  list(APPEND licences qt lgpl-3 gpl-3)
endif()
foreach(licence ${licences})
  configure_file(licences/${licence}.txt ${texts}/licences/${licence}.txt @ONLY NEWLINE_STYLE WIN32)
  install(FILES ${texts}/licences/${licence}.txt DESTINATION licences)
endforeach()
install(FILES ${texts}/readme.txt ${texts}/licence.txt ${texts}/changelog.txt DESTINATION .)

set(CPACK_GENERATOR ZIP NSIS)
set(CPACK_PACKAGE_FILE_NAME sondrix-${PROJECT_VERSION}-windows-${width})
if(NOT TARGET sondrix)
  string(APPEND CPACK_PACKAGE_FILE_NAME -batch)
endif()
set(CPACK_PACKAGE_INSTALL_DIRECTORY Sondrix)
set(CPACK_RESOURCE_FILE_LICENSE ${texts}/licence.txt)

# installer/NSIS.template.in takes the place of CPack's own, which asks for an administrator.
list(PREPEND CMAKE_MODULE_PATH ${CMAKE_CURRENT_SOURCE_DIR}/installer)
set(CPACK_SONDRIX_ICON ${PROJECT_SOURCE_DIR}/src/app/desktop/sondrix.ico)
set(CPACK_SONDRIX_MAIN sondrix-batch.exe)
set(CPACK_SONDRIX_SHORTCUT "")
set(CPACK_SONDRIX_RUN_AT_END "")
set(CPACK_SONDRIX_OPEN "")
if(TARGET sondrix)
  set(CPACK_SONDRIX_MAIN sondrix.exe)
  set(CPACK_SONDRIX_SHORTCUT "CreateShortcut \"\${START}\\Sondrix.lnk\" \"$INSTDIR\\sondrix.exe\"")
  set(CPACK_SONDRIX_RUN_AT_END "!define MUI_FINISHPAGE_RUN \"$INSTDIR\\sondrix.exe\"")
  # Windows offers the window for all kinds of source; which program a double click starts stays the user's choice.
  set(CPACK_SONDRIX_OPEN
      "  WriteRegStr HKCU \"\${APPLICATION}\\shell\\open\\command\" \"\" '\"$INSTDIR\\sondrix.exe\" \"%1\"'\n${CPACK_SONDRIX_OFFER}")
endif()
