# Runs the kuvo-convert program itself: the four layout slices into one file equal
# to the expected one, the program on its own output giving the same bytes, and a
# refused file leaving the former output as it was.
set(data ${SOURCE}/tests/data/convert)
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})

function(expect what actual expected)
  if(NOT "${actual}" STREQUAL "${expected}")
    message(FATAL_ERROR "${what}:\n  got      [${actual}]\n  expected [${expected}]")
  endif()
endfunction()

execute_process(COMMAND ${CONVERT} ${data}/operateur-2008a.csv ${data}/operateur-2008b.csv
                        ${data}/operateur-2017.csv ${data}/operateur-2019.csv
  WORKING_DIRECTORY ${WORK} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
expect("status" "${status}" "0")
expect("summary" "${out}" "126 tirages, du 26/12/2011 au 24/07/2024, écrits dans Kuvo.csv\n")
expect("messages" "${err}" "")
file(SHA256 ${WORK}/Kuvo.csv written)
file(SHA256 ${data}/echantillons-kuvo.csv wanted)
expect("Kuvo.csv" "${written}" "${wanted}")

execute_process(COMMAND ${CONVERT} -o again.csv Kuvo.csv
  WORKING_DIRECTORY ${WORK} RESULT_VARIABLE status OUTPUT_VARIABLE out)
expect("status on its own output" "${status}" "0")
expect("summary" "${out}" "126 tirages, du 26/12/2011 au 24/07/2024, écrits dans again.csv\n")
file(SHA256 ${WORK}/again.csv again)
expect("its own output" "${again}" "${wanted}")

file(WRITE ${WORK}/bad.csv "date_de_tirage;boule_1;boule_2;boule_3;boule_4;boule_5;numero_chance\n20120326;36;14;49;29;13;6\n20120324;48;8;18;13;11;0\n")
execute_process(COMMAND ${CONVERT} ${data}/operateur-2019.csv bad.csv
  WORKING_DIRECTORY ${WORK} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
expect("status on a bad file" "${status}" "1")
expect("summary" "${out}" "")
expect("message" "${err}" "kuvo-convert : bad.csv, ligne 3, champ numero_chance : « 0 » n'est pas un numéro chance de 1 à 10.\n")
file(SHA256 ${WORK}/Kuvo.csv kept)
expect("former output" "${kept}" "${wanted}")

# The command line: help and version in French on the standard output, a
# mistake told on the error output with status 2.
execute_process(COMMAND ${CONVERT} --help
  WORKING_DIRECTORY ${WORK} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
expect("status of --help" "${status}" "0")
expect("messages of --help" "${err}" "")
foreach(part "usage : kuvo-convert [OPTION]... FICHIER..." "Options :" "-o, --output SORTIE"
             "Exemple :" "Codes de sortie :" "  2  ligne de commande incorrecte")
  string(FIND "${out}" "${part}" at)
  if(at LESS 0)
    message(FATAL_ERROR "--help lacks [${part}]:\n${out}")
  endif()
endforeach()
execute_process(COMMAND ${CONVERT} -h WORKING_DIRECTORY ${WORK} OUTPUT_VARIABLE short)
expect("-h" "${short}" "${out}")
execute_process(COMMAND ${CONVERT} --version
  WORKING_DIRECTORY ${WORK} RESULT_VARIABLE status OUTPUT_VARIABLE out)
expect("status of --version" "${status}" "0")
expect("--version" "${out}" "kuvo-convert ${VERSION}\n")
set(usage "usage : kuvo-convert [-o SORTIE] FICHIER...")
function(refused said)
  execute_process(COMMAND ${CONVERT} ${ARGN}
    WORKING_DIRECTORY ${WORK} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
  expect("status of [${ARGN}]" "${status}" "2")
  expect("output of [${ARGN}]" "${out}" "")
  expect("message of [${ARGN}]" "${err}" "kuvo-convert : ${said}\n${usage}\n")
endfunction()
refused("option inconnue « --couleur »." --couleur Kuvo.csv)
refused("-o attend le nom du fichier à écrire." Kuvo.csv -o)
refused("aucun fichier à convertir.")
execute_process(COMMAND ${CONVERT} --output=long.csv ${data}/operateur-2019.csv
  WORKING_DIRECTORY ${WORK} RESULT_VARIABLE status OUTPUT_VARIABLE out)
expect("status with --output" "${status}" "0")
expect("summary with --output" "${out}" "40 tirages, du 24/04/2024 au 24/07/2024, écrits dans long.csv\n")
file(REMOVE_RECURSE ${WORK})
