# nel_embed(target file...): makes the bytes of files below resources/ a list of numbers that
# sources of the target include between braces, as "<file>.inc".
set(NEL_EMBED_SCRIPT "${CMAKE_CURRENT_LIST_DIR}/embed_file.cmake")

function(nel_embed target)
  foreach(file IN LISTS ARGN)
    set(input "${CMAKE_SOURCE_DIR}/resources/${file}")
    set(output "${NEL_GENERATED_DIR}/${file}.inc")
    add_custom_command(OUTPUT "${output}"
      COMMAND "${CMAKE_COMMAND}" "-DINPUT=${input}" "-DOUTPUT=${output}" -P "${NEL_EMBED_SCRIPT}"
      DEPENDS "${input}" "${NEL_EMBED_SCRIPT}"
      COMMENT "Embedding resources/${file}"
      VERBATIM)
    target_sources(${target} PRIVATE "${output}")
  endforeach()
endfunction()
