# What the packages say of the kinds of file that the program converts, a row for each extension of its table of jobs
# (src/jobs/job_table.cpp); the test packaging.FileTypes fails until the two agree. EXTENSION|HOW|MIME TYPE:
#   own       a type of ours: its files are opened by a click
#   offered   a type that others have too: Sondrix is one of those that open it
#   unclaimed nothing is said of it, since nearly all files of that name are something else; they are chosen in the
#             window or dropped onto it
set(file_types
    "sl2|own|application/x-sl2-echogram"
    "sl3|own|application/x-sl3-echogram"
    "csv|offered|text/csv"
    "log|offered|text/x-log"
    "txt|unclaimed|"
    "mp|unclaimed|")

# For the templates: a line of the menu's entry, the definitions of the shared MIME database, the lines of the metainfo
# and those of the installer for Windows, where every kind is offered; the words that a shell's completion takes.
set(SONDRIX_MIME_LIST "")
set(SONDRIX_MIME_TYPES "")
set(SONDRIX_MEDIA_TYPES "")
set(SONDRIX_EXTENSIONS "")
set(CPACK_SONDRIX_OFFER "")
foreach(row ${file_types})
  string(REGEX MATCH "^([^|]*)[|]([^|]*)[|](.*)$" row "${row}")
  set(extension ${CMAKE_MATCH_1})
  set(how ${CMAKE_MATCH_2})
  set(type "${CMAKE_MATCH_3}")
  string(TOUPPER ${extension} name)
  list(APPEND SONDRIX_EXTENSIONS ${extension})
  string(APPEND CPACK_SONDRIX_OFFER
         "  WriteRegStr HKCU \"\${APPLICATION}\\SupportedTypes\" .${extension} \"\"\n")
  if(type)
    string(APPEND SONDRIX_MIME_LIST "${type};")
    string(APPEND SONDRIX_MEDIA_TYPES "    <mediatype>${type}</mediatype>\n")
  endif()
  if(how STREQUAL "own")
    string(APPEND SONDRIX_MIME_TYPES "  <mime-type type=\"${type}\">\n"
           "    <comment>${name} echogram</comment>\n"
           "    <comment xml:lang=\"de\">${name}-Echogramm</comment>\n"
           "    <comment xml:lang=\"ru\">эхограмма ${name}</comment>\n"
           "    <glob pattern=\"*.${extension}\"/>\n  </mime-type>\n")
  endif()
endforeach()
list(TRANSFORM SONDRIX_EXTENSIONS PREPEND "*." OUTPUT_VARIABLE SONDRIX_PATTERNS)
list(JOIN SONDRIX_PATTERNS " | " SONDRIX_PATTERNS)
list(JOIN SONDRIX_EXTENSIONS "|" SONDRIX_ALTERNATIVES)
