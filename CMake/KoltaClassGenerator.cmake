# kolta_add_camera_class(<target> XML <file>... CLASS <name>
#     [OUTPUT_DIRECTORY <folder>] [HEADER <name>] [SOURCE <name>]
#     [HEADER_TEMPLATE <file>] [SOURCE_TEMPLATE <file>]
#     [GETTER_PREFIX <text>] [GETTER_SUFFIX <text>] [SETTER_PREFIX <text>] [SETTER_SUFFIX <text>] [FORCE])
#
# Generates a camera's class from its description and adds it to an executable or a library of this folder; users of the
# library can include the header. Several descriptions give one class for all of these cameras. The class is generated
# again when a description, its start values, a template or the generator changes, and compiled again only if it has
# changed then. Options are those of kolta-classgen; a relative output folder lies below the binary folder.
function(kolta_add_camera_class target)
    set(names OUTPUT_DIRECTORY HEADER SOURCE HEADER_TEMPLATE SOURCE_TEMPLATE)
    set(texts GETTER_PREFIX GETTER_SUFFIX SETTER_PREFIX SETTER_SUFFIX)
    cmake_parse_arguments(PARSE_ARGV 1 arg "FORCE" "CLASS;${names};${texts}" XML)
    set(call "kolta_add_camera_class(${target})")
    # A misspelled keyword after the files is taken for one of them.
    set(unknown ${arg_XML})
    list(FILTER unknown INCLUDE REGEX "^[A-Z]+(_[A-Z]+)*$")
    list(APPEND unknown ${arg_UNPARSED_ARGUMENTS})
    if(NOT arg_XML OR NOT arg_CLASS)
        message(FATAL_ERROR "${call}: XML and CLASS are required.")
    elseif(unknown)
        message(FATAL_ERROR "${call}: unknown arguments: ${unknown}.")
    elseif(NOT arg_CLASS MATCHES "^[A-Za-z_][A-Za-z0-9_]*$")
        message(FATAL_ERROR "${call}: '${arg_CLASS}' is not a name for a class.")
    elseif(NOT TARGET ${target})
        message(FATAL_ERROR "${call}: there is no such target.")
    endif()
    get_target_property(type ${target} TYPE)
    get_target_property(folder ${target} SOURCE_DIR)
    if(type STREQUAL "INTERFACE_LIBRARY")
        message(FATAL_ERROR "${call}: an INTERFACE library compiles nothing. Make it a STATIC or an OBJECT library.")
    elseif(NOT folder STREQUAL CMAKE_CURRENT_SOURCE_DIR)
        message(FATAL_ERROR "${call}: the target belongs to ${folder}. Call this function there.")
    endif()

    set(options)
    set(inputs)
    foreach(kind IN ITEMS HEADER SOURCE)
        if(arg_${kind}_TEMPLATE)
            get_filename_component(template ${arg_${kind}_TEMPLATE} ABSOLUTE)
            string(TOLOWER ${kind} option)
            list(APPEND options --${option}-template ${template})
            list(APPEND inputs ${template})
        endif()
    endforeach()
    foreach(text IN LISTS texts)
        # An empty text is one, too.
        if(text IN_LIST ARGN)
            string(TOLOWER ${text} option)
            string(REPLACE _ - option ${option})
            list(APPEND options "--${option}=${arg_${text}}")
        endif()
    endforeach()
    if(arg_FORCE)
        list(APPEND options --force)
    endif()
    if(NOT arg_HEADER)
        set(arg_HEADER ${arg_CLASS}.h)
    endif()
    if(NOT arg_SOURCE)
        set(arg_SOURCE ${arg_CLASS}.cpp)
    endif()
    if(NOT arg_OUTPUT_DIRECTORY)
        set(arg_OUTPUT_DIRECTORY ${target}_camera)
    endif()
    get_filename_component(output ${arg_OUTPUT_DIRECTORY} ABSOLUTE BASE_DIR ${CMAKE_CURRENT_BINARY_DIR})
    set(descriptions)
    foreach(xml IN LISTS arg_XML)
        get_filename_component(xml ${xml} ABSOLUTE)
        string(REGEX REPLACE "\\.[^./]*$" ".values" values ${xml})
        file(GLOB values CONFIGURE_DEPENDS ${values})
        if(xml MATCHES ":")
            # Make would take the colon for its own.
            list(LENGTH descriptions number)
            set(links)
            foreach(file IN LISTS xml values)
                get_filename_component(ending ${file} LAST_EXT)
                set(link ${CMAKE_CURRENT_BINARY_DIR}/${target}_${arg_CLASS}${number}${ending})
                file(CREATE_LINK ${file} ${link} SYMBOLIC)
                list(APPEND links ${link})
            endforeach()
            list(POP_FRONT links xml)
            set(values ${links})
        endif()
        list(APPEND descriptions ${xml})
        list(APPEND options --xml ${xml})
        list(APPEND inputs ${xml} ${values})
    endforeach()

    # What came out the same keeps its time, so that nothing is compiled again: the stamp tells that it is up to date.
    set(files ${output}/${arg_HEADER} ${output}/${arg_SOURCE})
    set(stamp ${CMAKE_CURRENT_BINARY_DIR}/${target}_${arg_CLASS}.stamp)
    set(generator KoltaClassGenerator::kolta-classgen)
    add_custom_command(OUTPUT ${stamp}
        BYPRODUCTS ${files}
        COMMAND ${generator} generate --class ${arg_CLASS} --header ${arg_HEADER} --source ${arg_SOURCE}
            --output ${output} ${options}
        COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
        DEPENDS ${inputs} ${KOLTA_DEFAULT_TEMPLATES} ${generator}
        COMMENT "Generating ${arg_CLASS}"
        VERBATIM)
    add_custom_target(${target}_${arg_CLASS} DEPENDS ${stamp})
    add_dependencies(${target} ${target}_${arg_CLASS})
    set_source_files_properties(${files} PROPERTIES GENERATED ON SKIP_UNITY_BUILD_INCLUSION ON)
    target_sources(${target} PRIVATE ${files} ${descriptions})
    target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${output}>)
endfunction()
