# Flags of everything that is built here.
set(CMAKE_CXX_EXTENSIONS OFF)
add_library(tessera_flags INTERFACE)
target_compile_features(tessera_flags INTERFACE cxx_std_20)
target_compile_options(
  tessera_flags
  INTERFACE -Wall
            -Wextra
            -Wpedantic
            -Wconversion
            -Wshadow
            -Werror
            -ffp-contract=off # sums and products stay as written: none is fused
            -fno-trapping-math # nobody traps floating point exceptions; no result depends on this
            "-ffile-prefix-map=${PROJECT_SOURCE_DIR}=." # the same bytes from any folder
            "-ffile-prefix-map=${PROJECT_BINARY_DIR}=build")

if(TESSERA_SANITIZE)
  # Dividing by zero is the model's own rule, so float-divide-by-zero stays out.
  set(sanitizers -fsanitize=address,undefined,float-cast-overflow -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_compile_options(tessera_flags INTERFACE ${sanitizers})
  target_link_options(tessera_flags INTERFACE ${sanitizers})
endif()

# Flags of the unit itself: only the FMI functions are visible, and two copies of the library in one process share
# nothing.
add_library(tessera_unit_flags INTERFACE)
target_link_libraries(tessera_unit_flags INTERFACE tessera_flags)
target_compile_options(tessera_unit_flags INTERFACE -fPIC -fvisibility=hidden -fvisibility-inlines-hidden
                                                    -fno-sized-deallocation # asks libstdc++ for no newer operator
                                                    $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>
                                                    # short runs are copied in place, not by a call
                                                    $<$<CXX_COMPILER_ID:GNU>:-fno-tree-loop-distribute-patterns>)

# A release is optimised as a whole where it is linked with tessera_whole_unit. Its objects hold ordinary code as well,
# which the tests link.
add_library(tessera_whole_unit INTERFACE)
set(is_optimised_as_a_whole "$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>")
target_compile_options(tessera_unit_flags INTERFACE "$<${is_optimised_as_a_whole}:-flto=auto;-ffat-lto-objects>")
target_link_options(tessera_whole_unit INTERFACE "$<${is_optimised_as_a_whole}:-flto=auto>")
