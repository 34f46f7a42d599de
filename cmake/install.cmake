# Where things go when they are installed: modules in a private folder of the library folder, with the
# share folder linked beside them as in the build folder, and headers in a folder of their own.
set(UITREE_INSTALL_MODULES ${CMAKE_INSTALL_LIBDIR}/uitree)
set(UITREE_INSTALL_SHARE ${CMAKE_INSTALL_DATADIR}/uitree)
set(UITREE_INSTALL_INCLUDE ${CMAKE_INSTALL_INCLUDEDIR}/uitree)
set(UITREE_INSTALL_CMAKE ${CMAKE_INSTALL_LIBDIR}/cmake/UITree)

function(install_module target)
    install(TARGETS ${target} LIBRARY DESTINATION ${UITREE_INSTALL_MODULES} COMPONENT uitree)
endfunction()

# A static library of those who embed the control, UITree::<target> for them.
function(install_library target)
    add_library(UITree::${target} ALIAS ${target})
    set_target_properties(${target} PROPERTIES OUTPUT_NAME uitree-${target})
    install(TARGETS ${target} EXPORT UITree
            ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT uitree-dev)
endfunction()

function(install_headers)
    install(DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR} DESTINATION ${UITREE_INSTALL_INCLUDE}
            COMPONENT uitree-dev FILES_MATCHING PATTERN "*.h")
endfunction()

# The three packages' files that no target makes.
function(install_files)
    set(share ${PROJECT_SOURCE_DIR}/share)
    install(DIRECTORY ${share}/_icons ${share}/_strings ${share}/replay
            DESTINATION ${UITREE_INSTALL_SHARE} COMPONENT uitree PATTERN "*.cpp" EXCLUDE)
    file(RELATIVE_PATH link /${UITREE_INSTALL_MODULES} /${UITREE_INSTALL_SHARE})
    file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/install)
    file(CREATE_LINK ${link} ${PROJECT_BINARY_DIR}/install/share SYMBOLIC)
    install(FILES ${PROJECT_BINARY_DIR}/install/share DESTINATION ${UITREE_INSTALL_MODULES}
            COMPONENT uitree)

    install(FILES ${share}/desktop/treehost.desktop
            DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT treehost)
    install(FILES ${share}/desktop/treehost.svg
            DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps COMPONENT treehost)
    install(FILES ${share}/completion/treehost
            DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT treehost)
    install_compressed(${share}/man/treehost.1 ${CMAKE_INSTALL_MANDIR}/man1 treehost)

    install(FILES ${PROJECT_SOURCE_DIR}/include/uitree.h DESTINATION ${UITREE_INSTALL_INCLUDE}
            COMPONENT uitree-dev)
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/examples
            DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/uitree-dev COMPONENT uitree-dev
            PATTERN CMakeLists.txt EXCLUDE PATTERN excerpt.cmake EXCLUDE PATTERN .* EXCLUDE)
    install(FILES ${PROJECT_SOURCE_DIR}/docs/embedding.md ${PROJECT_SOURCE_DIR}/docs/modules.md
            DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/uitree-dev COMPONENT uitree-dev)

    include(CMakePackageConfigHelpers)
    configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/UITreeConfig.cmake.in
                                  ${PROJECT_BINARY_DIR}/install/UITreeConfig.cmake
                                  INSTALL_DESTINATION ${UITREE_INSTALL_CMAKE}
                                  PATH_VARS UITREE_INSTALL_MODULES)
    write_basic_package_version_file(${PROJECT_BINARY_DIR}/install/UITreeConfigVersion.cmake
                                     COMPATIBILITY SameMajorVersion)
    install(FILES ${PROJECT_BINARY_DIR}/install/UITreeConfig.cmake
                  ${PROJECT_BINARY_DIR}/install/UITreeConfigVersion.cmake
            DESTINATION ${UITREE_INSTALL_CMAKE} COMPONENT uitree-dev)
    install(EXPORT UITree NAMESPACE UITree:: FILE UITreeTargets.cmake
            DESTINATION ${UITREE_INSTALL_CMAKE} COMPONENT uitree-dev)
    file(RELATIVE_PATH PKGCONFIG_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/uitree.pc.in
                   ${PROJECT_BINARY_DIR}/install/uitree.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/install/uitree.pc
            DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT uitree-dev)
endfunction()

# As Debian wants manual pages and changelogs: the same bytes whenever they are made.
function(install_compressed file folder component)
    get_filename_component(name ${file} NAME)
    set(compressed ${PROJECT_BINARY_DIR}/install/${component}/${name}.gz)
    add_custom_command(OUTPUT ${compressed} DEPENDS ${file}
                       COMMAND ${CMAKE_COMMAND} -E make_directory
                               ${PROJECT_BINARY_DIR}/install/${component}
                       COMMAND gzip -9nc ${file} > ${compressed})
    add_custom_target(compressed_${component}_${name} ALL DEPENDS ${compressed})
    install(FILES ${compressed} DESTINATION ${folder} COMPONENT ${component})
endfunction()
