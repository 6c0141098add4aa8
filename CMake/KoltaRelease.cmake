# What packages and software centres tell of this release: its licence, and from Packaging/changelog who released it when.

# The sources state none.
set(KOLTA_LICENCE LicenseRef-None-Stated)

set(changelog ${PROJECT_SOURCE_DIR}/Packaging/changelog)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${changelog})
file(STRINGS ${changelog} heading LIMIT_COUNT 1)
if(NOT heading MATCHES "\\(${PROJECT_VERSION}\\)")
    message(WARNING "Packaging/changelog says nothing of version ${PROJECT_VERSION}.")
endif()
file(STRINGS ${changelog} signed REGEX "^ -- " LIMIT_COUNT 1)
if(NOT signed MATCHES "^ -- (.*)  (...), (..) (...) (....) ")
    message(FATAL_ERROR "Packaging/changelog: '${signed}' is not a signature.")
endif()
set(KOLTA_RELEASE_RPM "${CMAKE_MATCH_2} ${CMAKE_MATCH_4} ${CMAKE_MATCH_3} ${CMAKE_MATCH_5} ${CMAKE_MATCH_1}")
# The months by numbers of two digits.
set(date ${CMAKE_MATCH_5} ${CMAKE_MATCH_4} ${CMAKE_MATCH_3})
set(month 100)
foreach(name IN ITEMS Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec)
    math(EXPR month "${month} + 1")
    string(SUBSTRING ${month} 1 2 digits)
    list(TRANSFORM date REPLACE ${name} ${digits})
endforeach()
list(JOIN date - KOLTA_RELEASE_DATE)
