# Compiler settings shared by every target of the project.

# Warnings are errors in our own code; third-party headers come in as SYSTEM.
function(kov_strict_warnings target)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Werror -Wno-error=deprecated-declarations)
endfunction()

if(KOV_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  add_link_options(-fsanitize=address,undefined)
endif()

# One library per folder: sources found by glob so that a new class needs no
# edit here; CONFIGURE_DEPENDS re-globs on every build.
function(kov_folder_sources out dir)
  file(GLOB_RECURSE _src CONFIGURE_DEPENDS ${dir}/*.cpp ${dir}/*.h ${dir}/*.qrc)
  set(${out} ${_src} PARENT_SCOPE)
endfunction()

# A static library of the module's code for one folder. A folder with no
# sources yet gives an interface library, so that the layers above can already
# depend on it.
function(kov_layer_library target dir)
  kov_folder_sources(_src ${dir})
  list(FILTER _src INCLUDE REGEX "\\.cpp$")
  if(_src)
    kov_folder_sources(_all ${dir})
    add_library(${target} STATIC ${_all})
    set_target_properties(${target} PROPERTIES AUTOMOC ON AUTORCC ON)
    target_include_directories(${target} PUBLIC ${CMAKE_SOURCE_DIR})
    target_link_libraries(${target} PUBLIC ${ARGN})
    kov_strict_warnings(${target})
  else()
    add_library(${target} INTERFACE)
    target_include_directories(${target} INTERFACE ${CMAKE_SOURCE_DIR})
    target_link_libraries(${target} INTERFACE ${ARGN})
  endif()
endfunction()
