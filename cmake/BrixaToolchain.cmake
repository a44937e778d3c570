# Build speed: a compiler cache and a fast linker are used when the machine has them.

include(CheckLinkerFlag)

find_program(BRIXA_CCACHE ccache)
if(BRIXA_CCACHE)
    # A precompiled header carries time stamps, which would make every cached object a miss. Paths
    # are taken relative to the tree, so that another clone of it finds the objects too.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND}
        -E
        env
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
        CCACHE_BASEDIR=${CMAKE_SOURCE_DIR}
        CCACHE_NOHASHDIR=1
        ${BRIXA_CCACHE})
endif()

foreach(linker IN ITEMS mold lld gold)
    string(TOUPPER "BRIXA_HAS_LINKER_${linker}" linker_works)
    check_linker_flag(CXX "-fuse-ld=${linker}" ${linker_works})
    if(${linker_works})
        add_link_options("-fuse-ld=${linker}")
        break()
    endif()
endforeach()

if(BRIXA_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined)
    add_link_options(-fsanitize=address,undefined)
endif()

# The fuzzers learn from the coverage of everything that they run.
if(BRIXA_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link,address,undefined
                        -fno-sanitize-recover=undefined)
    add_link_options(-fsanitize=address,undefined)
endif()
