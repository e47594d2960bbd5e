# Libraries of Windows that the program loads when it first calls them, from the system's folder
# (swr/system/system_library_win.h). Windows would look for them in the program's folder first if
# they were imported like the others: they are not among those that it knows in every version.

# delayed_system_library(NAME): defines the target delayed_NAME, to be linked in the place of NAME.
# The functions stand in cmake/delayed/NAME.def, with the bytes of their arguments as 32-bit Windows
# decorates them.
function(delayed_system_library name)
  set(library "${PROJECT_BINARY_DIR}/libdelayed_${name}.a")
  set(definition "${PROJECT_SOURCE_DIR}/cmake/delayed/${name}.def")
  if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    set(machine i386 --kill-at)
  else()
    set(machine i386:x86-64)
    file(READ "${definition}" content)
    string(REGEX REPLACE "@[0-9]+" "" content "${content}")
    set(definition "${PROJECT_BINARY_DIR}/delayed_${name}.def")
    file(CONFIGURE OUTPUT "${definition}" CONTENT "${content}" @ONLY)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
                 "${PROJECT_SOURCE_DIR}/cmake/delayed/${name}.def")
  endif()
  add_custom_command(OUTPUT "${library}" DEPENDS "${definition}"
    COMMAND "${CMAKE_DLLTOOL}" --machine ${machine} --input-def "${definition}"
            --output-delaylib "${library}" --temp-prefix "delayed_${name}"
    COMMENT "Making delayed imports of ${name}" VERBATIM)
  add_custom_target(delayed_${name}_library DEPENDS "${library}")
  add_library(delayed_${name} INTERFACE)
  add_dependencies(delayed_${name} delayed_${name}_library)
  target_link_libraries(delayed_${name} INTERFACE "${library}")
endfunction()
