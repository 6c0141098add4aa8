# kolta_add_camera_class(<target> XML <file> CLASS <name>
#     [OUTPUT_DIRECTORY <folder>] [HEADER_TEMPLATE <file>] [SOURCE_TEMPLATE <file>])
#
# Generates a camera's class from its description and adds it to the target. It is generated again when the
# description, a template or the generator changes.
function(kolta_add_camera_class target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "XML;CLASS;OUTPUT_DIRECTORY;HEADER_TEMPLATE;SOURCE_TEMPLATE" "")
    if(NOT arg_XML OR NOT arg_CLASS OR arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "kolta_add_camera_class(<target> XML <file> CLASS <name> ...) has wrong arguments.")
    endif()
    if(NOT arg_OUTPUT_DIRECTORY)
        set(arg_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/${target}_camera)
    endif()
    get_filename_component(xml ${arg_XML} ABSOLUTE)
    set(options)
    set(templates)
    foreach(kind IN ITEMS HEADER SOURCE)
        if(arg_${kind}_TEMPLATE)
            get_filename_component(template ${arg_${kind}_TEMPLATE} ABSOLUTE)
            string(TOLOWER ${kind} option)
            list(APPEND options --${option}-template ${template})
            list(APPEND templates ${template})
        endif()
    endforeach()

    set(files ${arg_OUTPUT_DIRECTORY}/${arg_CLASS}.h ${arg_OUTPUT_DIRECTORY}/${arg_CLASS}.cpp)
    add_custom_command(OUTPUT ${files}
        COMMAND KoltaClassGenerator::kolta-classgen generate --xml ${xml} --class ${arg_CLASS}
            --output ${arg_OUTPUT_DIRECTORY} ${options}
        # Files that came out the same were left alone.
        COMMAND ${CMAKE_COMMAND} -E touch ${files}
        DEPENDS ${xml} ${templates} KoltaClassGenerator::kolta-classgen ${KOLTA_DEFAULT_TEMPLATES}
        COMMENT "Generating ${arg_CLASS}"
        VERBATIM)
    target_sources(${target} PRIVATE ${files})
    target_include_directories(${target} PRIVATE ${arg_OUTPUT_DIRECTORY})
endfunction()
