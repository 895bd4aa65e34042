# Fails when a source file includes a folder of a higher layer. The layers, from
# the bottom: core; the window folders; the list of windows; the Qt views; the
# program's entry. A file may include its own layer and those below it.
set(layer_core core)
set(layer_windows core draws statistics proposals favourites about)
set(layer_registry ${layer_windows} windows)
set(layer_gui core gui)
set(layer_app ${layer_registry} gui app)
set(all_folders core draws statistics proposals favourites about windows gui app)

set(folder_layers
  "core:core" "draws:windows" "statistics:windows" "proposals:windows"
  "favourites:windows" "about:windows" "windows:registry" "gui:gui" "app:app")

set(failures "")
foreach(entry ${folder_layers})
  string(REPLACE ":" ";" pair "${entry}")
  list(GET pair 0 folder)
  list(GET pair 1 layer)
  set(allowed ${layer_${layer}})
  file(GLOB_RECURSE files "${SRC}/${folder}/*.cpp" "${SRC}/${folder}/*.h")
  foreach(file ${files})
    file(STRINGS "${file}" lines REGEX "^[ \t]*#[ \t]*include[ \t]*\"")
    foreach(line ${lines})
      string(REGEX REPLACE "^[ \t]*#[ \t]*include[ \t]*\"([^\"]*)\".*" "\\1" path "${line}")
      string(REGEX MATCH "^[^/]+" top "${path}")
      if(NOT path MATCHES "/")
        continue()
      endif()
      list(FIND all_folders "${top}" known)
      list(FIND allowed "${top}" ok)
      if(known GREATER -1 AND ok EQUAL -1)
        file(RELATIVE_PATH rel "${SRC}" "${file}")
        string(APPEND failures "  ${rel} includes ${path}\n")
      endif()
    endforeach()
  endforeach()
endforeach()

if(failures)
  message(FATAL_ERROR "Includes that go up a layer:\n${failures}")
endif()
message(STATUS "Every include goes down the layers")
