include(${CMAKE_CURRENT_LIST_DIR}/KoltaClassGeneratorTargets.cmake)
get_filename_component(KOLTA_DEFAULT_TEMPLATES ${CMAKE_CURRENT_LIST_DIR}/../../KoltaClassGenerator/Templates ABSOLUTE)
set(KOLTA_DEFAULT_TEMPLATES ${KOLTA_DEFAULT_TEMPLATES}/CppTemplate.h ${KOLTA_DEFAULT_TEMPLATES}/CppTemplate.cpp)
include(${CMAKE_CURRENT_LIST_DIR}/KoltaClassGenerator.cmake)
