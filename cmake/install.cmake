# Installs the library, its public headers below include/vx7base, and a CMake package. Headers whose first line says
# that they are private stay behind, and so does the platform layer but for what programs use of it.
include(CMakePackageConfigHelpers)

set(include_dir ${CMAKE_INSTALL_INCLUDEDIR}/vx7base)
file(GLOB_RECURSE headers CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/general/*.h)
list(FILTER headers EXCLUDE REGEX "^general/platform/(posix/|platform\\.h)")
foreach(header ${headers})
    file(STRINGS ${PROJECT_SOURCE_DIR}/${header} first LIMIT_COUNT 1)
    if(NOT first MATCHES "Private header")
        get_filename_component(folder ${header} DIRECTORY)
        install(FILES ${header} DESTINATION ${include_dir}/${folder})
    endif()
endforeach()
install(FILES general/vx7base.h DESTINATION ${include_dir})

install(TARGETS vx7base EXPORT vx7base
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/vx7base)
install(EXPORT vx7base NAMESPACE vx7base:: FILE vx7baseConfig.cmake DESTINATION ${package_dir})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/vx7baseConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/vx7baseConfigVersion.cmake DESTINATION ${package_dir})
