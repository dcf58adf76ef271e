# Warnings and build kinds, in one interface target that every target of ours links.
add_library(krz_options INTERFACE)
target_compile_options(krz_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Wnon-virtual-dtor -Woverloaded-virtual
  -Werror=return-type -Werror=switch)
target_compile_options(krz_options INTERFACE -ffunction-sections -fdata-sections)
target_link_options(krz_options INTERFACE -Wl,--as-needed -Wl,--gc-sections -Wl,-O1 -Wl,-z,noseparate-code)

# The tables of classes and commands are full of addresses; packed, the loader is through with them sooner.
include(CheckLinkerFlag)
check_linker_flag(CXX -Wl,-z,pack-relative-relocs KRZ_PACKS_RELOCATIONS)
if(KRZ_PACKS_RELOCATIONS)
  target_link_options(krz_options INTERFACE -Wl,-z,pack-relative-relocs)
endif()

if(KRZ_SANITIZE)
  target_compile_options(krz_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined
    -fno-omit-frame-pointer)
  target_link_options(krz_options INTERFACE -fsanitize=address,undefined)
else()
  # Undefined symbols of a shared library fail when it is linked, not when somebody loads it.
  target_link_options(krz_options INTERFACE $<$<NOT:$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>>:-Wl,-z,defs>)
endif()

# A fuzzer steers by the code its inputs reach, so everything it links is compiled to tell.
if(KRZ_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES Clang)
    message(FATAL_ERROR "KRZ_FUZZ needs clang: cmake --preset fuzz")
  endif()
  target_compile_options(krz_options INTERFACE -fsanitize=fuzzer-no-link)
  target_compile_definitions(krz_options INTERFACE _GLIBCXX_ASSERTIONS)
endif()

# Starting krz is most of its time on a small movie, and loading the shared C++ library is most of starting.
add_library(krz_cxx_runtime INTERFACE)
if(KRZ_STATIC_CXX AND NOT KRZ_SANITIZE)
  target_link_options(krz_cxx_runtime INTERFACE -static-libstdc++ -static-libgcc -Wl,--exclude-libs,ALL)
  # What calculates loads libm when it first does.
  include(CheckIncludeFile)
  check_include_file(gnu/lib-names.h KRZ_KNOWS_LIBM)
  if(KRZ_KNOWS_LIBM)
    add_library(late_math STATIC ${PROJECT_SOURCE_DIR}/common/late_math.c)
    target_compile_options(late_math PRIVATE -Wall -Wextra -fno-builtin -ffunction-sections)
    target_link_libraries(krz_cxx_runtime INTERFACE $<LINK_LIBRARY:WHOLE_ARCHIVE,late_math> ${CMAKE_DL_LIBS})
  endif()
endif()

find_program(KRZ_CCACHE ccache)
if(KRZ_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${KRZ_CCACHE})
  set(CMAKE_C_COMPILER_LAUNCHER ${KRZ_CCACHE})
endif()
