# What a user's installation holds beyond the programs, the store, the desktop
# entry and the icons, and the Debian package made of it all (scripts/package).

set(KUVO_MAINTAINER "L'équipe Kuvo <kuvo@example.org>")
set(KUVO_HOMEPAGE "https://kuvo.example.org" CACHE STRING
  "The project's web site: the package's homepage; the metainfo's pictures under /images/ on it")

# Man pages, written by hand, with the version of the project; installed
# compressed, without a time stamp so that each build gives the same bytes.
set(KUVO_MAN_PAGES "")
foreach(page kuvo kuvo-convert)
  configure_file(docs/man/${page}.1.in ${CMAKE_BINARY_DIR}/man/${page}.1 @ONLY)
  add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/man/${page}.1.gz
    COMMAND gzip -9nkf ${CMAKE_BINARY_DIR}/man/${page}.1
    DEPENDS ${CMAKE_SOURCE_DIR}/docs/man/${page}.1.in
    COMMENT "Compressing the man page ${page}(1)")
  list(APPEND KUVO_MAN_PAGES ${CMAKE_BINARY_DIR}/man/${page}.1.gz)
endforeach()

# The Debian changelog of the package, compressed the same way.
configure_file(data/changelog.in ${CMAKE_BINARY_DIR}/doc/changelog @ONLY)
add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/doc/changelog.gz
  COMMAND gzip -9nkf ${CMAKE_BINARY_DIR}/doc/changelog
  DEPENDS ${CMAKE_SOURCE_DIR}/data/changelog.in)
add_custom_target(user_docs ALL DEPENDS ${KUVO_MAN_PAGES} ${CMAKE_BINARY_DIR}/doc/changelog.gz)

# The software centre's page: the pictures of the manual that show Kuvo best,
# each "file|English caption|French caption"; the first is the default.
set(KUVO_SCREENSHOT_LIST
  "fenetre-principale|The main window and its history|La fenêtre principale et son historique"
  "visualisation-graphique|Frequency of every number, with its chart|Fréquence de chaque numéro, avec son graphique"
  "sorties-groupe|Dates on which a group of numbers came out|Dates de sortie d'un groupe de numéros"
  "sorties-groupees|Ranking of the pairs that came out|Classement des paires sorties"
  "alea-base|Numbers to play, from the history|Numéros à jouer, tirés de l'historique"
  "tirages-preferes|Favourite draws|Tirages préférés")
set(KUVO_SCREENSHOTS "")
set(kind "default")
foreach(entry ${KUVO_SCREENSHOT_LIST})
  string(REPLACE "|" ";" fields "${entry}")
  list(GET fields 0 file)
  list(GET fields 1 en)
  list(GET fields 2 fr)
  string(APPEND KUVO_SCREENSHOTS
    "    <screenshot type=\"${kind}\">\n"
    "      <caption>${en}</caption>\n"
    "      <caption xml:lang=\"fr\">${fr}</caption>\n"
    "      <image>${KUVO_HOMEPAGE}/images/${file}.png</image>\n"
    "    </screenshot>\n")
  set(kind "extra")
endforeach()
string(STRIP "${KUVO_SCREENSHOTS}" KUVO_SCREENSHOTS)
set(KUVO_SCREENSHOTS "    ${KUVO_SCREENSHOTS}")
configure_file(data/org.example.kuvo.metainfo.xml
  ${CMAKE_BINARY_DIR}/metainfo/org.example.kuvo.metainfo.xml @ONLY)

install(FILES ${KUVO_MAN_PAGES} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${CMAKE_BINARY_DIR}/metainfo/org.example.kuvo.metainfo.xml
  DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES data/copyright ${CMAKE_BINARY_DIR}/doc/changelog.gz docs/guide.md
  DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/kuvo)
install(DIRECTORY docs/images/ DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/kuvo/images
  FILES_MATCHING PATTERN "*.png")

# The Debian package: build/kuvo_VERSION_ARCH.deb. Its dependencies are those
# of the binaries, found by dpkg-shlibdeps, and Qt's translations of its dialogs.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kuvo)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "L'équipe Kuvo")
set(CPACK_PACKAGE_CONTACT "${KUVO_MAINTAINER}")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${KUVO_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${KUVO_HOMEPAGE})
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-translations-l10n")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
  "lottery draw history, statistics and number proposals
Kuvo is a desktop program, in French, for followers of the national lottery
(five numbers from 1 to 49 and a chance number from 1 to 10). It comes with
the whole history of the game since October 2008, counts every pair, triple,
quadruple and quintuple that came out, shows frequency tables and a chart,
finds when a group came out, ranks and prints the groups, proposes numbers to
play and keeps the user's favourite draws.
.
The package also holds kuvo-convert, which merges the operator's history
files into one, and the players' manual in French with its pictures.")
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
include(CPack)
