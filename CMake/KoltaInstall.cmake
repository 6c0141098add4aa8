# Where everything is installed. The components Tool, Library and Development become packages.
if(PROJECT_IS_TOP_LEVEL AND NOT DEFINED CMAKE_INSTALL_LIBDIR AND EXISTS /etc/debian_version AND CMAKE_LIBRARY_ARCHITECTURE)
    # Also below /usr/local, where Debian looks there, too: packages can be made from any build.
    set(CMAKE_INSTALL_LIBDIR lib/${CMAKE_LIBRARY_ARCHITECTURE} CACHE PATH "Object code libraries")
endif()
include(GNUInstallDirs)

# The executables look beside themselves, as in the build.
set(KOLTA_INSTALL_FOLDER ${CMAKE_INSTALL_LIBEXECDIR}/KoltaClassGenerator)
set(KOLTA_INSTALL_DATA ${CMAKE_INSTALL_DATADIR}/KoltaClassGenerator)

# kolta_install_program(<target> [EXPORT <name>]): into that folder, with a link to it where the shell looks. A library of
# the SDK beside it comes before the one that is installed with ours.
function(kolta_install_program target)
    file(RELATIVE_PATH libraries ${CMAKE_INSTALL_FULL_LIBEXECDIR}/KoltaClassGenerator ${CMAKE_INSTALL_FULL_LIBDIR})
    # CMake itself leaves out an SDK's folder that lies in the sources.
    set(paths "$ORIGIN" "$ORIGIN/${libraries}" ${KOLTA_SDK_FOLDER})
    # One path for both: CMake would fill up the build's with colons, behind which the current folder is searched.
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "${paths}" BUILD_WITH_INSTALL_RPATH ON
        INSTALL_RPATH_USE_LINK_PATH ON)
    install(TARGETS ${target} ${ARGN} RUNTIME DESTINATION ${KOLTA_INSTALL_FOLDER} COMPONENT Tool)
    kolta_install_link(${CMAKE_INSTALL_BINDIR}/${target} ${KOLTA_INSTALL_FOLDER}/${target})
endfunction()

# kolta_install_link(<link> <file>): both below the prefix, which may be moved.
function(kolta_install_link link file)
    cmake_path(ABSOLUTE_PATH link BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX} OUTPUT_VARIABLE from)
    cmake_path(ABSOLUTE_PATH file BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX} OUTPUT_VARIABLE to)
    cmake_path(GET from PARENT_PATH folder)
    file(RELATIVE_PATH to ${folder} ${to})
    cmake_path(GET link FILENAME name)
    file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/links)
    file(CREATE_LINK ${to} ${PROJECT_BINARY_DIR}/links/${name} SYMBOLIC)
    cmake_path(GET link PARENT_PATH folder)
    install(FILES ${PROJECT_BINARY_DIR}/links/${name} DESTINATION ${folder} COMPONENT Tool)
endfunction()
