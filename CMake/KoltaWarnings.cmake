# Kolta::Warnings: the warnings that all of our own targets are compiled with.
add_library(KoltaWarnings INTERFACE)
add_library(Kolta::Warnings ALIAS KoltaWarnings)
target_compile_options(KoltaWarnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow)
if(KOLTA_WARNINGS_AS_ERRORS)
    target_compile_options(KoltaWarnings INTERFACE -Werror)
endif()
