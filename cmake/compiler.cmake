# How everything is compiled. Warnings are errors where CMAKE_COMPILE_WARNING_AS_ERROR says so, as the
# presets of those who work on the project do.
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion
                    $<$<COMPILE_LANGUAGE:CXX>:-Woverloaded-virtual>
                    # g++ 12 sees overlaps in the library's strings that are none
                    $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-restrict>
                    # clang counts signs among the conversions, g++ does not
                    $<$<CXX_COMPILER_ID:Clang>:-Wno-sign-conversion>)
# Files may be larger than 2 GB on 32-bit machines too. No interface has a type that this changes.
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    add_compile_definitions(_FILE_OFFSET_BITS=64)
endif()
# What is built does not depend on where.
add_compile_options(-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.)
# Nothing links what it does not use.
add_link_options(-Wl,--as-needed)

if(SANITIZE)
    add_compile_options(-fsanitize=${SANITIZE} -fno-omit-frame-pointer -O1)
    add_link_options(-fsanitize=${SANITIZE})
endif()
if(SANITIZE MATCHES address)
    add_compile_definitions(FINDS_LEAKS)
endif()
if(SANITIZE MATCHES undefined)
    # Not the check of types behind calls: a foreign host's are not ours.
    add_compile_options(-fno-sanitize=vptr -fno-sanitize-recover=undefined)
endif()
if(FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# Compilers' results are kept where ccache is installed, for every checkout alike.
find_program(CCACHE ccache)
if(CCACHE AND PROJECT_IS_TOP_LEVEL AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}
        CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE})
    set(CMAKE_C_COMPILER_LAUNCHER ${CMAKE_CXX_COMPILER_LAUNCHER})
endif()
