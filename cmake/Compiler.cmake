# The language and the warnings. They hold for every target of the tree, so that none can be forgotten; nothing here
# builds foreign code.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

if(NOT DEFINED CMAKE_COMPILE_WARNING_AS_ERROR)
  set(CMAKE_COMPILE_WARNING_AS_ERROR ON)
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
                    -Woverloaded-virtual)

# GCC's unique symbols keep a library mapped after dlclose; a package must really go when it is unloaded.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  add_compile_options(-fno-gnu-unique)
  # GCC 12 warns of overlaps inside std::string that cannot be once it inlines appends.
  add_compile_options(-Wno-restrict)
  # Optimising, it loses sight of which alternative a variant holds and takes the others for uninitialized.
  add_compile_options(-Wno-maybe-uninitialized)
endif()

if(MARGINDESK_SANITIZE)
  set(sanitizerFlags -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_compile_options(${sanitizerFlags})
  add_link_options(${sanitizerFlags})
endif()

find_program(MARGINDESK_CCACHE ccache)
mark_as_advanced(MARGINDESK_CCACHE)
if(MARGINDESK_CCACHE AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${MARGINDESK_CCACHE}")
endif()
