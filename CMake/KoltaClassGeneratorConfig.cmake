include(${CMAKE_CURRENT_LIST_DIR}/KoltaClassGeneratorTargets.cmake)
# Where the program itself looks: beside it.
get_target_property(KOLTA_DEFAULT_TEMPLATES KoltaClassGenerator::kolta-classgen LOCATION)
get_filename_component(KOLTA_DEFAULT_TEMPLATES ${KOLTA_DEFAULT_TEMPLATES} DIRECTORY)
set(KOLTA_DEFAULT_TEMPLATES ${KOLTA_DEFAULT_TEMPLATES}/Templates/CppTemplate.h
    ${KOLTA_DEFAULT_TEMPLATES}/Templates/CppTemplate.cpp)
include(${CMAKE_CURRENT_LIST_DIR}/KoltaClassGenerator.cmake)
