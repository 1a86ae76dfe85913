# Installing like a Linux desktop program, and the Debian package.
#   cmake --install build/default --prefix stage
#   cd build/default && cpack -G DEB
# Puts nutrovex and nutrovex-tool in bin/, the template catalogue in share/nutrovex/, the desktop
# entry, the icon, the AppStream metainfo and the man pages where desktops and man look for them.
include(GNUInstallDirs)

set(NUTROVEX_APP_ID "org.zerbu.Nutrovex")
set(NUTROVEX_ICON "${PROJECT_SOURCE_DIR}/src/ui/resources/art/nutrovex.svg"
    CACHE FILEPATH "The scalable application icon that is installed")
set(dist ${PROJECT_SOURCE_DIR}/dist/linux)

# Both programs answer --version with the project's version.
foreach(program IN ITEMS nutrovex nutrovex-tool)
  if(TARGET ${program})
    target_compile_definitions(${program} PRIVATE NUTROVEX_VERSION="${PROJECT_VERSION}")
    install(TARGETS ${program} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  endif()
endforeach()

install(FILES ${PROJECT_BINARY_DIR}/data/FoodDB.ddb DESTINATION ${CMAKE_INSTALL_DATADIR}/nutrovex)
# Man pages are installed compressed, as Debian has them.
find_program(NUTROVEX_GZIP gzip REQUIRED)
set(man_pages nutrovex-tool.1)
if(TARGET nutrovex)
  list(APPEND man_pages nutrovex.1)
endif()
set(compressed_pages)
foreach(page IN LISTS man_pages)
  set(out ${PROJECT_BINARY_DIR}/man/${page})
  add_custom_command(
    OUTPUT ${out}.gz
    COMMAND ${CMAKE_COMMAND} -E copy ${dist}/${page} ${out}
    COMMAND ${NUTROVEX_GZIP} -9nf ${out}
    DEPENDS ${dist}/${page}
    COMMENT "Compressing the man page ${page}")
  list(APPEND compressed_pages ${out}.gz)
endforeach()
add_custom_target(nutrovex_man_pages ALL DEPENDS ${compressed_pages})
install(FILES ${compressed_pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
# The licences: the program's own and the public-domain status of the shipped food data.
install(FILES ${dist}/copyright ${PROJECT_SOURCE_DIR}/LICENSE
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/nutrovex)

if(TARGET nutrovex)
  install(FILES ${dist}/${NUTROVEX_APP_ID}.desktop
          DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${dist}/${NUTROVEX_APP_ID}.metainfo.xml
          DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
  if(EXISTS "${NUTROVEX_ICON}")
    install(FILES "${NUTROVEX_ICON}" DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps
            RENAME ${NUTROVEX_APP_ID}.svg)
  else()
    message(WARNING "No application icon at ${NUTROVEX_ICON}: it will not be installed")
  endif()
endif()

# The desktop entry and the metainfo as the desktops' own validators read them.
find_program(NUTROVEX_DESKTOP_FILE_VALIDATE desktop-file-validate)
if(NUTROVEX_DESKTOP_FILE_VALIDATE)
  add_test(NAME desktop-entry
           COMMAND ${NUTROVEX_DESKTOP_FILE_VALIDATE} ${dist}/${NUTROVEX_APP_ID}.desktop)
endif()
find_program(NUTROVEX_APPSTREAMCLI appstreamcli)
if(NUTROVEX_APPSTREAMCLI)
  add_test(NAME metainfo COMMAND ${NUTROVEX_APPSTREAMCLI} validate --no-net
                                 ${dist}/${NUTROVEX_APP_ID}.metainfo.xml)
endif()

# The Debian package: nutrovex_<version>_<arch>.deb. Its library dependencies are read from the
# binaries (dpkg-shlibdeps); Qt's platform plugins are a package of their own that no binary
# links, and the program cannot open a window without them.
set(CPACK_PACKAGE_NAME nutrovex)
set(CPACK_PACKAGE_VENDOR "Zerbu")
set(CPACK_PACKAGE_CONTACT "Nutrovex developers <nutrovex@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "personal nutrition and fitness logbook")
set(CPACK_PACKAGE_DESCRIPTION
    "Nutrovex keeps a logbook of days for several people on one machine: weigh-ins, foods eaten by meal, exercises, water and notes. From these it computes the basal metabolic rate, the day's calories and nutrients, a daily food budget and weight charts. Its starting food catalogue holds nearly five thousand foods of the USDA National Nutrient Database for Standard Reference (public domain) beside everyday foods. nutrovex-tool inspects, converts and scripts the data files.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins")
set(CPACK_STRIP_FILES ON)
include(CPack)
