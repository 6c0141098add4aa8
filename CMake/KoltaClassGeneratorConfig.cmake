include(${CMAKE_CURRENT_LIST_DIR}/KoltaClassGeneratorTargets.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/KoltaClassGenerator.cmake)
