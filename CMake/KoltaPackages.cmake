# Packages from the components: cpack makes Debian packages and an archive, rpmbuild those of other systems.
get_target_property(type KoltaCPP::KoltaCPP TYPE)
if(KOLTA_SDK_ROOT OR (type STREQUAL "STATIC_LIBRARY" AND NOT KOLTA_USE_INSTALLED_SDK))
    message(STATUS "No packages: they are made for the shared library only, and need one that is packaged, too.")
    # Perhaps of the same build before it was changed.
    file(REMOVE ${PROJECT_BINARY_DIR}/CPackConfig.cmake)
    return()
endif()

set(tool_summary "generator of C++ classes for GenICam cameras")
set(tool "Lists the cameras, reads every feature of the one that is selected, and
writes a C++ class for exactly this camera: typed accessors for every feature,
an enumeration type for every enumeration feature. With a window, and without
one as kolta-classgen, for scripts and builds.")
set(library_summary "GenICam cameras in C++")
set(library "The library finds GigE Vision and USB3 Vision cameras, simulates others from
their descriptions, and reads and writes their features.")
set(development_summary "${library_summary} (development files)")
set(development "${library}
.
This package has the headers, and the files for CMake and pkg-config.")

set(CPACK_COMPONENTS_ALL Tool)
if(NOT KOLTA_USE_INSTALLED_SDK)
    list(APPEND CPACK_COMPONENTS_ALL Library Development)
    set(CPACK_COMPONENT_TOOL_DEPENDS Library)
    set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS Library)
endif()
set(CPACK_PACKAGE_CONTACT "KoltaClassGenerator developers <developers@opx.example>")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_SYSTEM_NAME ${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_GENERATOR TGZ)
if(EXISTS /etc/debian_version)
    list(PREPEND CPACK_GENERATOR DEB)
endif()

set(packaging ${PROJECT_SOURCE_DIR}/Packaging)
set(CPACK_PRE_BUILD_SCRIPTS ${packaging}/Finish.cmake)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOL_PACKAGE_NAME kolta-class-generator)
set(CPACK_DEBIAN_TOOL_DESCRIPTION "${tool_summary}\n${tool}")
set(CPACK_DEBIAN_TOOL_PACKAGE_RECOMMENDS libkoltacpp-dev)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME libkoltacpp)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_DESCRIPTION "${library_summary}\n${library}")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libkoltacpp-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "${development_summary}\n${development}")
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} COMPONENT)
    install(FILES ${packaging}/copyright ${packaging}/changelog COMPONENT ${component}
        DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${CPACK_DEBIAN_${COMPONENT}_PACKAGE_NAME})
endforeach()
# After installation and removal the same has to be done.
set(control ${PROJECT_BINARY_DIR}/control)
configure_file(${packaging}/udev ${control}/postinst COPYONLY)
configure_file(${packaging}/udev ${control}/postrm COPYONLY)
configure_file(${PROJECT_SOURCE_DIR}/Sdk/libKoltaCPP.symbols ${control}/symbols COPYONLY)
file(WRITE ${control}/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${control}/postinst ${control}/postrm ${control}/symbols ${control}/triggers)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_SOURCE_GENERATOR TGZ)
set(CPACK_SOURCE_PACKAGE_FILE_NAME ${CPACK_DEBIAN_TOOL_PACKAGE_NAME}-${PROJECT_VERSION})
string(REGEX REPLACE "([][+.*()^$?|\\])" "\\\\\\1" source "${PROJECT_SOURCE_DIR}")
set(CPACK_SOURCE_IGNORE_FILES "^${source}/(build[^/]*|\\.git|\\.cache)(/|$)")
string(REPLACE "\n.\n" "\n\n" development "${development}")
# It builds the library, too.
if(NOT KOLTA_USE_INSTALLED_SDK)
    configure_file(${packaging}/kolta-class-generator.spec.in ${CPACK_PACKAGE_DIRECTORY}/kolta-class-generator.spec @ONLY)
endif()
include(CPack)
