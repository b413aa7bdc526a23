# Installs the build into a prefix of its own, moves it, builds the consumer against it, runs it.
#   cmake -DBUILD_DIR=... -DSOURCE_DIR=... -DWORK_DIR=... -DCOMPILER=... -P run.cmake

file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/moved)

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result
                    OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${ARGN}\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK_DIR}/installed)
file(RENAME ${WORK_DIR}/installed ${prefix})
run(${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${WORK_DIR}/build -DCMAKE_BUILD_TYPE=Release
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_CXX_COMPILER=${COMPILER}
    -DCMAKE_FIND_USE_PACKAGE_REGISTRY=OFF)
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
run(${WORK_DIR}/build/consumer)
foreach(line "framework 1.0.0" "class quon_calcora.commonfunc" "feet 3.2808399" "distance 5.0")
    string(FIND "${output}" "${line}\n" position)
    if(position EQUAL -1)
        message(FATAL_ERROR "the consumer did not print \"${line}\" but\n${output}")
    endif()
endforeach()

# Every header of the SDK can be included alone.
file(GLOB headers RELATIVE ${prefix}/include ${prefix}/include/*/*.h)
foreach(header IN LISTS headers)
    file(WRITE ${WORK_DIR}/alone.cpp "#include <${header}>\n")
    run(${COMPILER} -std=c++20 -fsyntax-only -I${prefix}/include ${WORK_DIR}/alone.cpp)
endforeach()
