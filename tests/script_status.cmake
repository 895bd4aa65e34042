# Runs kuvo-script on small scripts and checks its exit status: 0 for a script
# that runs to its end or to a fatal error of the program, 2 with the line
# number for a malformed one, whatever the state of the windows it names.
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})

function(run name text status message)
  file(WRITE ${WORK}/${name}.kvs "${text}")
  execute_process(COMMAND ${DRIVER} ${WORK}/${name}.kvs
    RESULT_VARIABLE got OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT "${got}" STREQUAL "${status}")
    message(FATAL_ERROR "${name}: status ${got}, expected ${status}\n${out}\n${err}")
  endif()
  if(NOT "${err}" MATCHES "${message}")
    message(FATAL_ERROR "${name}: stderr [${err}] does not match [${message}]")
  endif()
endfunction()

set(draw "sql \"INSERT INTO Sorties VALUES ('2024-03-04', 23, 7, 41, 2, 36, 4)\"\n")
run(ends "store new\n${draw}start\n" 0 "^$")
# An empty store ends the program at start: the rest is skipped.
run(fatal "store new\nstart\nget Module1.NbTirages\n" 0 "^$")
run(unknown "store new\n\n# comment\nstart\nbogus word\n" 2 "unknown.kvs:5:")
run(quote "store new\nwrite f.txt \"abc\n" 2 "quote.kvs:2:")
run(escape "store new\nwrite f.txt \"a\\qb\"\n" 2 "escape.kvs:2:")
run(words "store new\n${draw}start\nclick\n" 2 "words.kvs:4:")
run(date "today 2024-02-30\n" 2 "date.kvs:1:")
# Malformed lines naming a window that is not loaded are still malformed.
run(mouse "store new\nmouse TirSais.Label1 sideways\n" 2 "mouse.kvs:2:")
run(coords "store new\nmouse TirSais.Label1 down 5 x\n" 2 "coords.kvs:2:")
run(key "store new\nkey TirSais.Label1 A\n" 2 "key.kvs:2:")
run(type "store new\ntype TirVerif.Text2\n" 2 "type.kvs:2:")
run(click "store new\nclick TirSais.Quitter a b\n" 2 "click.kvs:2:")
# A byte order mark before the first command, and lines ending in CR LF.
string(ASCII 239 187 191 bom)
run(bom "${bom}store new\r\n${draw}start\r\n" 0 "^$")
