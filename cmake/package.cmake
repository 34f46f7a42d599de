# The three Debian packages, made by script/package.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VENDOR "The UITree developers")
set(CPACK_PACKAGE_CONTACT "The UITree developers <uitree@example.com>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL uitree treehost uitree-dev)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_COMPONENT_UITREE_DESCRIPTION "UITree shows a collection that its host owns, in place, as indented rows
on the host's canvas. With it come the modules of its reference host.")
set(CPACK_COMPONENT_TREEHOST_DESCRIPTION "The program loads the tree control like any host and shows a tree with it:
in a window, in a picture, as lines, or under a script of input.")
set(CPACK_COMPONENT_UITREE-DEV_DESCRIPTION "Headers for C++ and C, the static framework and reference host, and samples.")
set(CPACK_DEBIAN_UITREE_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_TREEHOST_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_UITREE-DEV_PACKAGE_SECTION libdevel)
set(own "uitree (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_UITREE-DEV_PACKAGE_DEPENDS
    "${own}, libcairo2-dev, libpango1.0-dev, libglib2.0-dev, libsqlite3-dev, libexpat1-dev, libarchive-dev, pkg-config")
# DEPENDS_FROM names a folder with the packages of the machine that they are made on: for a machine
# whose libraries are only unpacked here, dependencies have the same names as theirs.
set(DEPENDS_FROM "" CACHE PATH "Packages to take the dependencies of the programs from")
set(CPACK_DEBIAN_UITREE-DEV_PACKAGE_NAME uitree-dev)
foreach(package uitree treehost)
    string(TOUPPER ${package} upper)
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${package})
    set(depends "")
    if(package STREQUAL treehost)
        set(depends "${own}")
    endif()
    if(DEPENDS_FROM)
        file(GLOB native ${DEPENDS_FROM}/${package}_*.deb)
        execute_process(COMMAND dpkg-deb --field ${native} Depends OUTPUT_VARIABLE depends
                        OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    else()
        set(CPACK_DEBIAN_${upper}_PACKAGE_SHLIBDEPS ON)
    endif()
    set(CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS "${depends}")
endforeach()
if(CMAKE_CROSSCOMPILING)
    set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE armhf)
endif()

foreach(package uitree treehost uitree-dev)
    set(docs ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package})
    install(FILES ${PROJECT_SOURCE_DIR}/cmake/debian/copyright DESTINATION ${docs}
            COMPONENT ${package})
    install_compressed(${PROJECT_SOURCE_DIR}/cmake/debian/changelog ${docs} ${package})
endforeach()
include(CPack)
