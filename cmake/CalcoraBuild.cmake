# Flags and helpers that every target of the project uses.

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
# Installed programs and libraries find each other wherever the tree is moved to.
set(CMAKE_INSTALL_RPATH "$ORIGIN;$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")

add_library(calcora_build_flags INTERFACE)
target_compile_features(calcora_build_flags INTERFACE cxx_std_20)
# Same input, same bits: no contraction of a*b+c, no fast-math anywhere.
target_compile_options(calcora_build_flags INTERFACE
    -ffp-contract=off -fvisibility=hidden
    -Wall -Wextra -Wshadow -Wconversion -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Unique symbols would keep a closed plugin in memory.
    target_compile_options(calcora_build_flags INTERFACE -fno-gnu-unique)
else()
    # Other compilers see more in -Wconversion and -Wshadow; GNU's reading is the project's.
    target_compile_options(calcora_build_flags INTERFACE -Wno-sign-conversion -Wno-shadow)
endif()
if(CALCORA_SANITIZE)
    target_compile_options(calcora_build_flags INTERFACE
        -fsanitize=${CALCORA_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(calcora_build_flags INTERFACE -fsanitize=${CALCORA_SANITIZE})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # The optimiser sees impossible paths behind the instrumentation.
        target_compile_options(calcora_build_flags INTERFACE -Wno-maybe-uninitialized)
    endif()
endif()

if(CALCORA_BUILD_FUZZ)  # the fuzzer looks into all but what has the property UNTRACED
    target_compile_options(calcora_build_flags INTERFACE
        $<$<NOT:$<BOOL:$<TARGET_PROPERTY:UNTRACED>>>:-fsanitize=fuzzer-no-link>)
endif()

# Collects the sources of the given folders, noticing new files by itself.
function(calcora_sources variable)
    set(found)
    foreach(folder IN LISTS ARGN)
        file(GLOB files CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp)
        list(APPEND found ${files})
    endforeach()
    set(${variable} ${found} PARENT_SCOPE)
endfunction()

# A room of the plugin.
function(calcora_room target)
    calcora_sources(sources ${ARGN})
    add_library(${target} STATIC ${sources})
    set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE ON)
    target_include_directories(${target} PUBLIC ${CMAKE_SOURCE_DIR})
    target_link_libraries(${target} PUBLIC tavrel_core PRIVATE calcora_build_flags)
endfunction()

# A plugin: exports its four functions and the container templates, nothing else.
function(calcora_plugin target)
    calcora_sources(sources ${ARGN})
    add_library(${target} MODULE ${sources})
    target_include_directories(${target} PRIVATE ${CMAKE_SOURCE_DIR})
    target_link_libraries(${target} PRIVATE tavrel_core calcora_build_flags)
    set(map ${CMAKE_SOURCE_DIR}/cmake/plugin.map)
    target_link_options(${target} PRIVATE -Wl,--version-script=${map})
    if(NOT CALCORA_SANITIZE)  # whose runtime may live in the program instead
        target_link_options(${target} PRIVATE -Wl,--no-undefined)
    endif()
    set_target_properties(${target} PROPERTIES LINK_DEPENDS ${map})
endfunction()
