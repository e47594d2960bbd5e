# Renders the drawings in resources/icons at build time and compiles the window's resources.

# Makes one .ico of each SVG in <svg_dir>, in <ico_dir>, and puts their names in <out_var>. Every
# icon has the sizes that the window asks for between 100% and 300%; the program's own (app.svg)
# also has the one that Explorer shows, as PNG, which is how icons of that size are stored.
function(render_icons svg_dir ico_dir out_var)
  find_program(RSVG_CONVERT rsvg-convert REQUIRED)
  find_program(ICOTOOL icotool REQUIRED)
  mark_as_advanced(RSVG_CONVERT ICOTOOL)

  file(GLOB drawings CONFIGURE_DEPENDS "${svg_dir}/*.svg")
  file(MAKE_DIRECTORY "${ico_dir}")
  set(icons "")
  foreach(drawing IN LISTS drawings)
    get_filename_component(name "${drawing}" NAME_WE)
    set(bitmaps "")
    set(render "")
    foreach(size IN ITEMS 16 20 24 32 48 64)
      set(bitmap "${ico_dir}/${name}-${size}.png")
      list(APPEND bitmaps "${bitmap}")
      list(APPEND render
        COMMAND "${RSVG_CONVERT}" -w ${size} -h ${size} "${drawing}" -o "${bitmap}")
    endforeach()
    if(name STREQUAL "app")
      set(bitmap "${ico_dir}/${name}-256.png")
      list(APPEND bitmaps "--raw=${bitmap}")
      list(APPEND render COMMAND "${RSVG_CONVERT}" -w 256 -h 256 "${drawing}" -o "${bitmap}")
    endif()
    set(icon "${ico_dir}/${name}.ico")
    add_custom_command(OUTPUT "${icon}" ${render}
      COMMAND "${ICOTOOL}" --create --bit-depth=32 "--output=${icon}" ${bitmaps}
      DEPENDS "${drawing}" COMMENT "Rendering ${name}.ico" VERBATIM)
    list(APPEND icons "${icon}")
  endforeach()
  set(${out_var} "${icons}" PARENT_SCOPE)
endfunction()

# Defines the object library <name>: the window's resources, for programs to link. Whoever links it
# also finds "resources/resource_ids.h". <generated> holds version.h and the manifest.
function(add_window_resources name generated)
  set(dir "${PROJECT_SOURCE_DIR}/resources")
  set(ico_dir "${CMAKE_CURRENT_BINARY_DIR}/icons")
  render_icons("${dir}/icons" "${ico_dir}" icons)
  add_library(${name} OBJECT "${dir}/sumwright.rc" ${icons})
  target_compile_options(${name} PRIVATE -c 65001)
  target_include_directories(${name} PRIVATE "${dir}" "${generated}" "${ico_dir}"
                             INTERFACE "${PROJECT_SOURCE_DIR}")
  # The resource compiler does not report what it reads.
  set_source_files_properties("${dir}/sumwright.rc" PROPERTIES OBJECT_DEPENDS
    "${dir}/resource_ids.h;${generated}/version.h;${generated}/sumwright.manifest;${icons}")
endfunction()
