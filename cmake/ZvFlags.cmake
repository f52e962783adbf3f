# What every target of this project is compiled with; nothing of it reaches a consumer of the package.
add_library(zv_flags INTERFACE)
target_compile_options(zv_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wold-style-cast
  # Results are the same on every target: no fused multiply-add, no x87 excess precision.
  -ffp-contract=off
  -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=)
if(ZV_WARNINGS_AS_ERRORS)
  target_compile_options(zv_flags INTERFACE -Werror)
endif()
if(CMAKE_CXX_FLAGS MATCHES "-m32")
  target_compile_options(zv_flags INTERFACE -msse2 -mfpmath=sse)
endif()
if(ZV_SANITIZE)
  target_compile_options(zv_flags INTERFACE -fsanitize=${ZV_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(zv_flags INTERFACE -fsanitize=${ZV_SANITIZE})
endif()
