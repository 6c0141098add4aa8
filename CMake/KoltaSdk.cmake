# KoltaCPP::KoltaCPP and KoltaCPP::Headers: the camera SDK, ours or another one. What is known of descriptions belongs to
# the front end, too, and is always built.
if(KOLTA_SDK_ROOT)
    set(KOLTA_USE_INSTALLED_SDK ON)
    find_path(sdk_headers KoltaCPP/KoltaCPP.h PATHS ${KOLTA_SDK_ROOT} PATH_SUFFIXES include NO_DEFAULT_PATH NO_CACHE)
    find_library(sdk_library libKoltaCPP.so PATHS ${KOLTA_SDK_ROOT} NO_DEFAULT_PATH NO_CACHE
        PATH_SUFFIXES lib lib/${CMAKE_LIBRARY_ARCHITECTURE} . include/KoltaCPP)
    if(NOT sdk_headers OR NOT sdk_library)
        message(FATAL_ERROR "KOLTA_SDK_ROOT: '${KOLTA_SDK_ROOT}' is no camera SDK. It has to have "
            "include/KoltaCPP/KoltaCPP.h and lib/libKoltaCPP.so.")
    endif()
    add_library(KoltaCPP::Headers INTERFACE IMPORTED)
    target_include_directories(KoltaCPP::Headers INTERFACE ${sdk_headers})
    add_library(KoltaCPP::KoltaCPP SHARED IMPORTED)
    # Whatever it calls itself, programs look for its name in their run paths, not for this file.
    set_target_properties(KoltaCPP::KoltaCPP PROPERTIES IMPORTED_LOCATION ${sdk_library} IMPORTED_NO_SONAME ON)
    target_link_libraries(KoltaCPP::KoltaCPP INTERFACE KoltaCPP::Headers)
    cmake_path(GET sdk_library PARENT_PATH KOLTA_SDK_FOLDER)
elseif(KOLTA_USE_INSTALLED_SDK)
    find_package(KoltaCPP REQUIRED)
    get_target_property(sdk_headers KoltaCPP::Headers INTERFACE_INCLUDE_DIRECTORIES)
endif()

set(KOLTA_SDK_HAS_EXTENSIONS ON)
if(NOT KOLTA_USE_INSTALLED_SDK)
    add_subdirectory(Sdk)
    return()
endif()
add_subdirectory(Sdk/Description)
if(NOT EXISTS ${sdk_headers}/KoltaCPP/Extensions.h)
    set(KOLTA_SDK_HAS_EXTENSIONS OFF)
    message(STATUS "The SDK has nothing to do with descriptions: no examples.")
endif()
