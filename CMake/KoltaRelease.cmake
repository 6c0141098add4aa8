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
# The month by its number, of two digits.
set(months Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec)
list(FIND months ${CMAKE_MATCH_4} month)
math(EXPR month "${month} + 101")
string(SUBSTRING ${month} 1 2 month)
set(KOLTA_RELEASE_DATE ${CMAKE_MATCH_5}-${month}-${CMAKE_MATCH_3})
