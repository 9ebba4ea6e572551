# Where an installed program lies on Linux, and the Debian package made of it (packaging/debian/build).
# The program and what it brings along stand together, because it looks for Mdx, guide and release notes beside itself;
# /usr/bin/orvan starts it on the program folder of its user and never lets it write into /usr.
if(WIN32)
    return() # packaging/windows/stage lays the folder out there
endif()
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON) # packing needs the programs, not the tests
set(place lib/orvan)
set(files ${CMAKE_SOURCE_DIR}/packaging/debian)
install(TARGETS orvan DESTINATION ${place})
install(DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/Mdx DESTINATION ${place} FILES_MATCHING REGEX "[.][mM][dD][xX]$")
install(FILES src/app/Kilavuz.htm src/app/Versiyon.htm DESTINATION ${place})
install(TARGETS orvanctl jetdb DESTINATION bin)
install(PROGRAMS ${files}/orvan DESTINATION bin)
install(FILES ${files}/orvan.desktop DESTINATION share/applications)
install(FILES packaging/icons/orvan.png DESTINATION share/icons/hicolor/256x256/apps)
install(FILES packaging/icons/orvan.svg DESTINATION share/icons/hicolor/scalable/apps)
install(FILES ${files}/default DESTINATION /etc/default RENAME orvan)
install(FILES ${files}/copyright docs/install.md src/app/Kilavuz.htm DESTINATION share/doc/orvan)
foreach(page orvan orvanctl jetdb) # the manual pages are Turkish
    set(packed ${CMAKE_BINARY_DIR}/man/${page}.1.gz)
    add_custom_command(OUTPUT ${packed} COMMAND gzip -9n < ${files}/man/${page}.1 > ${packed} DEPENDS ${files}/man/${page}.1)
    list(APPEND pages ${packed})
endforeach()
set(changes ${CMAKE_BINARY_DIR}/man/changelog.gz)
add_custom_command(OUTPUT ${changes} COMMAND gzip -9n < ${files}/changelog > ${changes} DEPENDS ${files}/changelog)
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/man)
add_custom_target(installed_documents DEPENDS ${pages} ${changes})
install(FILES ${pages} DESTINATION share/man/man1)
install(FILES ${changes} DESTINATION share/doc/orvan)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME orvan)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR ORVAN)
set(CPACK_PACKAGE_CONTACT "ORVAN maintainers <maintainers@orvan.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "records of a vocational education centre, in Access files")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "Students, workplaces, coordinators, marks, absences and insurance days of
a Turkish vocational and apprenticeship education centre. The data are
ordinary Microsoft Access files in a folder that several workstations may
share; no server is needed. With jetdb, which looks into any such file,
and orvanctl, which does batch jobs from a terminal.")
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-translations-l10n, fonts-dejavu-core")
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${files}/conffiles)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
    WORLD_EXECUTE)
include(CPack)
