# Everything that belongs together lies in one folder, as in the build: the executables look beside themselves.
set(KOLTA_INSTALL_FOLDER lib/KoltaClassGenerator)

# kolta_install_beside(<target> [EXPORT <name>]): into that folder.
function(kolta_install_beside target)
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN;$ORIGIN/../KoltaCPP")
    install(TARGETS ${target} ${ARGN} RUNTIME DESTINATION ${KOLTA_INSTALL_FOLDER}
        LIBRARY DESTINATION ${KOLTA_INSTALL_FOLDER})
endfunction()

# kolta_install_program(<target> [EXPORT <name>]): the same, with a link to it where the shell looks.
function(kolta_install_program target)
    kolta_install_beside(${target} ${ARGN})
    install(CODE "
        file(MAKE_DIRECTORY \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/bin\")
        file(CREATE_LINK ../${KOLTA_INSTALL_FOLDER}/${target}
            \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/bin/${target}\" SYMBOLIC)")
endfunction()
