include(CMakePackageConfigHelpers)

install(TARGETS simplepath EXPORT SimplePathTargets
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
# The public headers: every header outside a detail/ folder. Headers under detail/ are the library's
# own helpers (segment readers, root finders, SIMD lanes); no public header includes them
# (scripts/check-includes.py), so a host compiles without them and they are not installed.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/simplepath DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    FILES_MATCHING PATTERN "*.h" PATTERN "detail" EXCLUDE)
install(EXPORT SimplePathTargets NAMESPACE simplepath:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/SimplePath)

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/SimplePathConfig.cmake.in
    ${PROJECT_BINARY_DIR}/SimplePathConfig.cmake
    INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/SimplePath)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/SimplePathConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/SimplePathConfig.cmake ${PROJECT_BINARY_DIR}/SimplePathConfigVersion.cmake
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/SimplePath)
