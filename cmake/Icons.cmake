# Renders the drawings in resources/icons at build time and compiles the window's resources.

# Makes an .ico in <ico_dir> from each SVG in <svg_dir>, and returns their names in <out_var>. Every
# icon has the sizes that the window needs at scalings from 100% to 300%. The program's icon (app.svg)
# also has Explorer's large size, stored as PNG, as is usual for that size.
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

# Defines the object library <name>: the window's resources, for programs to link. Programs that
# link it can also include "resources/resource_ids.h". <generated> contains version.h and the
# manifest.
function(add_window_resources name generated)
  set(dir "${PROJECT_SOURCE_DIR}/resources")
  set(ico_dir "${CMAKE_CURRENT_BINARY_DIR}/icons")
  render_icons("${dir}/icons" "${ico_dir}" icons)
  add_library(${name} OBJECT "${dir}/sumwright.rc" ${icons})
  target_compile_options(${name} PRIVATE -c 65001)
  target_include_directories(${name} PRIVATE "${dir}" "${generated}" "${ico_dir}"
                             INTERFACE "${PROJECT_SOURCE_DIR}")
  # The resource compiler does not report which files it reads.
  set_source_files_properties("${dir}/sumwright.rc" PROPERTIES OBJECT_DEPENDS
    "${dir}/resource_ids.h;${generated}/version.h;${generated}/sumwright.manifest;${icons}")
endfunction()
