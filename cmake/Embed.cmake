# krz_embed(VARIABLE FILE...): turns text files into constants of the program, one C++ source for all of them.
# The constant of "info.bas" is `kInfoScript` in namespace cli, declared in commands/scripts.h.
function(krz_embed variable)
  set(output ${CMAKE_CURRENT_BINARY_DIR}/embedded_scripts.cpp)
  add_custom_command(
    OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} -DOUTPUT=${output} "-DINPUTS=${ARGN}" -P ${PROJECT_SOURCE_DIR}/cmake/EmbedScripts.cmake
    DEPENDS ${ARGN} ${KRZ_EMBED_SHARED} ${PROJECT_SOURCE_DIR}/cmake/EmbedScripts.cmake
    COMMENT "Embedding the built-in commands"
    VERBATIM)
  set(${variable} ${output} PARENT_SCOPE)
endfunction()

# krz_compile_scripts(VARIABLE TOOL DEPENDENCY...): the bytecode of the embedded scripts, as a C++ source that the
# program TOOL prints.
function(krz_compile_scripts variable tool)
  set(output ${CMAKE_CURRENT_BINARY_DIR}/compiled_scripts.cpp)
  add_custom_command(
    OUTPUT ${output}
    COMMAND ${tool} ${output}
    DEPENDS ${tool} ${ARGN}
    COMMENT "Compiling the built-in commands"
    VERBATIM)
  set(${variable} ${output} PARENT_SCOPE)
endfunction()

# krz_embed_text(VARIABLE CONSTANT FILE...): turns text files, one behind the other, into one constant of namespace cli.
function(krz_embed_text variable constant)
  set(output ${CMAKE_CURRENT_BINARY_DIR}/embedded_${constant}.cpp)
  add_custom_command(
    OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} -DOUTPUT=${output} -DCONSTANT=${constant} "-DINPUTS=${ARGN}"
      -P ${PROJECT_SOURCE_DIR}/cmake/EmbedText.cmake
    DEPENDS ${ARGN} ${PROJECT_SOURCE_DIR}/cmake/EmbedText.cmake
    VERBATIM)
  set(${variable} ${output} PARENT_SCOPE)
endfunction()
