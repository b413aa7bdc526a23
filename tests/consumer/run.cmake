# Installs the build into a prefix of its own, moves it, and uses it as others do: builds and runs
# examples/sdk/, compiles and runs the code blocks of the documents, includes every header alone.
#   cmake -DBUILD_DIR=... -DSOURCE_DIR=<tree> -DWORK_DIR=... -DCOMPILER=... -P run.cmake

file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/moved)
set(examples ${SOURCE_DIR}/examples/sdk)

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result
                    OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${ARGN}\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

# What an example prints stands in its last comment.
function(check source)
    file(READ ${examples}/${source} expected)
    string(REGEX REPLACE "^.*\n// Prints:\n" "" expected "${expected}")
    string(REGEX REPLACE "//   ([^\n]*\n)" "\\1" expected "${expected}")
    if(NOT expected STREQUAL output)
        message(FATAL_ERROR "${source} does not print\n${expected}but\n${output}")
    endif()
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK_DIR}/installed)
file(RENAME ${WORK_DIR}/installed ${prefix})

run(${CMAKE_COMMAND} -S ${examples} -B ${WORK_DIR}/examples -G Ninja
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_CXX_COMPILER=${COMPILER}
    -DCMAKE_FIND_USE_PACKAGE_REGISTRY=OFF)
run(${CMAKE_COMMAND} --build ${WORK_DIR}/examples)
file(GLOB_RECURSE sources RELATIVE ${examples} ${examples}/*.cpp)
list(REMOVE_ITEM sources fence/fence_plugin.cpp)
foreach(source IN LISTS sources)
    get_filename_component(name ${source} NAME_WE)
    run(${WORK_DIR}/examples/${name})
    check(${source})
endforeach()

file(GLOB documents RELATIVE ${SOURCE_DIR} ${SOURCE_DIR}/docs/manual/*.md)
run(${SOURCE_DIR}/tests/consumer/documents.sh ${prefix} ${COMPILER} ${WORK_DIR}/documents
    ${SOURCE_DIR} README.md docs/calcora.md ${documents})

file(GLOB headers RELATIVE ${prefix}/include ${prefix}/include/*/*.h)
foreach(header IN LISTS headers)
    file(WRITE ${WORK_DIR}/alone.cpp "#include <${header}>\n")
    run(${COMPILER} -std=c++20 -fsyntax-only -I${prefix}/include ${WORK_DIR}/alone.cpp)
endforeach()
