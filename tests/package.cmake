# Builds the Debian package from the build tree and checks it as a user's
# machine would take it: its control fields and computed dependencies, its
# files, lintian, the converter run from the unpacked files, the desktop entry
# and the metainfo validated, the man pages rendered, the manual's pictures.
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})

function(run what)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err
                  WORKING_DIRECTORY ${WORK})
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${what} failed (${status}):\n${out}${err}")
  endif()
  set(out "${out}" PARENT_SCOPE)
  set(err "${err}" PARENT_SCOPE)
endfunction()
function(expect what actual expected)
  if(NOT "${actual}" STREQUAL "${expected}")
    message(FATAL_ERROR "${what}:\n  got      [${actual}]\n  expected [${expected}]")
  endif()
endfunction()

run("dpkg --print-architecture" dpkg --print-architecture)
string(STRIP "${out}" arch)
run("cpack" ${CPACK} -G DEB --config ${BINARY}/CPackConfig.cmake -B ${WORK}/out)
set(deb ${WORK}/out/kuvo_${VERSION}_${arch}.deb)
if(NOT EXISTS ${deb})
  message(FATAL_ERROR "no package ${deb}:\n${out}")
endif()

# Control fields: the dependencies of the binaries, computed, and Qt's
# translations named by hand.
foreach(field Package Version Architecture Section Maintainer)
  run("dpkg-deb -f ${field}" dpkg-deb -f ${deb} ${field})
  string(STRIP "${out}" value)
  set(control_${field} "${value}")
endforeach()
expect("Package" "${control_Package}" "kuvo")
expect("Version" "${control_Version}" "${VERSION}")
expect("Architecture" "${control_Architecture}" "${arch}")
run("dpkg-deb -f Depends" dpkg-deb -f ${deb} Depends)
string(STRIP "${out}" depends)
foreach(needed "qt6-translations-l10n" "libc6 (>= " "libqt6core6 (>= " "libqt6gui6 (>= "
               "libqt6widgets6 (>= " "libqt6printsupport6 (>= " "libsqlite3-0 (>= "
               "libstdc++6 (>= ")
  string(FIND "${depends}" "${needed}" at)
  if(at LESS 0)
    message(FATAL_ERROR "Depends lacks [${needed}]: ${depends}")
  endif()
endforeach()

# The files, exactly: programs, store, desktop entry, icons, metainfo, man
# pages, documentation and every picture of the manual.
set(wanted
  ./usr/bin/kuvo ./usr/bin/kuvo-convert ./usr/share/kuvo/Kuvo.Mdb
  ./usr/share/applications/kuvo.desktop ./usr/share/metainfo/org.example.kuvo.metainfo.xml
  ./usr/share/man/man1/kuvo.1.gz ./usr/share/man/man1/kuvo-convert.1.gz
  ./usr/share/doc/kuvo/copyright ./usr/share/doc/kuvo/changelog.gz ./usr/share/doc/kuvo/guide.md)
foreach(size 32 48 64 128 256)
  list(APPEND wanted ./usr/share/icons/hicolor/${size}x${size}/apps/kuvo.png)
endforeach()
file(GLOB pictures RELATIVE ${SOURCE}/docs/images ${SOURCE}/docs/images/*.png)
foreach(picture ${pictures})
  list(APPEND wanted ./usr/share/doc/kuvo/images/${picture})
endforeach()
list(SORT wanted)
run("dpkg-deb -c" dpkg-deb -c ${deb})
string(REPLACE "\n" ";" lines "${out}")
set(files "")
foreach(line ${lines})
  if(line MATCHES "^-[^ ]+ root/root .* (\\./[^ ]+)$")
    list(APPEND files ${CMAKE_MATCH_1})
  endif()
endforeach()
list(SORT files)
expect("files of the package" "${files}" "${wanted}")

run("lintian" lintian --fail-on error ${deb})

# Unpacked where a user would not install it, the converter still runs.
set(root ${WORK}/root)
run("dpkg-deb -x" dpkg-deb -x ${deb} ${root})
run("kuvo-convert --version" ${root}/usr/bin/kuvo-convert --version)
expect("kuvo-convert --version" "${out}" "kuvo-convert ${VERSION}\n")
run("kuvo-convert" ${root}/usr/bin/kuvo-convert -o ${WORK}/Kuvo.csv
    ${SOURCE}/tests/data/convert/operateur-2019.csv)
expect("summary" "${out}" "40 tirages, du 24/04/2024 au 24/07/2024, écrits dans ${WORK}/Kuvo.csv\n")
file(STRINGS ${WORK}/Kuvo.csv written)
list(LENGTH written count)
expect("lines written" "${count}" "41")
# The program loads its libraries and, with no screen, says so and ends.
execute_process(COMMAND ${CMAKE_COMMAND} -E env --unset=DISPLAY --unset=WAYLAND_DISPLAY
                        --unset=QT_QPA_PLATFORM LANG=C.UTF-8 ${root}/usr/bin/kuvo
  RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err TIMEOUT 60)
expect("kuvo without a screen" "${status}" "1")
string(FIND "${err}" "Kuvo a besoin d'une session graphique" at)
if(at LESS 0)
  message(FATAL_ERROR "kuvo without a screen said:\n${out}${err}")
endif()

run("desktop-file-validate" desktop-file-validate ${root}/usr/share/applications/kuvo.desktop)
expect("desktop-file-validate" "${out}${err}" "")
run("appstreamcli validate" appstreamcli validate --no-net
    ${root}/usr/share/metainfo/org.example.kuvo.metainfo.xml)

# The software centre shows pictures of the manual.
file(READ ${root}/usr/share/metainfo/org.example.kuvo.metainfo.xml metainfo)
string(REGEX MATCHALL "/images/[^<]+\\.png</image>" shown "${metainfo}")
list(LENGTH shown count)
if(count LESS 1)
  message(FATAL_ERROR "the metainfo shows no picture")
endif()
foreach(image ${shown})
  string(REGEX REPLACE "^/images/(.*)</image>$" "\\1" picture "${image}")
  if(NOT EXISTS ${root}/usr/share/doc/kuvo/images/${picture})
    message(FATAL_ERROR "the metainfo shows ${picture}, which is no picture of the manual")
  endif()
endforeach()

# The man pages render without a warning.
foreach(page kuvo kuvo-convert)
  execute_process(COMMAND ${CMAKE_COMMAND} -E env LC_ALL=C.UTF-8 MANWIDTH=80
                          man --warnings -l ${root}/usr/share/man/man1/${page}.1.gz
    RESULT_VARIABLE status OUTPUT_VARIABLE text ERROR_VARIABLE warnings)
  expect("man ${page} status" "${status}" "0")
  expect("man ${page} warnings" "${warnings}" "")
  string(FIND "${text}" "CODE DE SORTIE" at)
  if(at LESS 0)
    message(FATAL_ERROR "man ${page} has no exit statuses:\n${text}")
  endif()
endforeach()

# Every picture the manual names is in the package, and there is one for
# each of the twelve windows at least.
file(READ ${root}/usr/share/doc/kuvo/guide.md guide)
string(REGEX MATCHALL "\\(images/[^)]+\\.png\\)" named "${guide}")
list(REMOVE_DUPLICATES named)
list(LENGTH named count)
if(count LESS 12)
  message(FATAL_ERROR "the manual names ${count} pictures, fewer than 12")
endif()
foreach(link ${named})
  string(REGEX REPLACE "^\\((.*)\\)$" "\\1" picture "${link}")
  if(NOT EXISTS ${root}/usr/share/doc/kuvo/${picture})
    message(FATAL_ERROR "the manual names ${picture}, which the package lacks")
  endif()
endforeach()
message(STATUS "${deb}: ${count} pictures, ${depends}")
file(REMOVE_RECURSE ${WORK})
