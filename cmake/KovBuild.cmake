# Compiler settings and install rules shared by every target of the project.

include(GNUInstallDirs)

# Installed headers keep the source tree's layout below one folder, so that an
# include reads the same in the project and in a consumer of the package.
set(KOV_INSTALL_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/kovAnimation)

# Warnings are errors in our own code; third-party headers come in as SYSTEM.
function(kov_strict_warnings target)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Werror -Wno-error=deprecated-declarations)
endfunction()

if(KOV_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  add_link_options(-fsanitize=address,undefined)
endif()

# The module's includes name their folder from the project's root
# ("animation/kovAnimationItem.h", "host/api/IkovApplication.h").
function(kov_root_includes target scope)
  target_include_directories(${target} ${scope}
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<INSTALL_INTERFACE:${KOV_INSTALL_INCLUDEDIR}>)
endfunction()

# Puts a library into the package (kovAnimation::<target>) with the headers of
# its source folders. The alias gives an outer project that adds this one as a
# subproject the same names.
function(kov_install_library target)
  install(TARGETS ${target} EXPORT kovAnimationTargets)
  add_library(kovAnimation::${target} ALIAS ${target})
  foreach(_dir ${ARGN})
    file(RELATIVE_PATH _rel ${PROJECT_SOURCE_DIR} ${_dir})
    install(DIRECTORY ${_dir}/ DESTINATION ${KOV_INSTALL_INCLUDEDIR}/${_rel} FILES_MATCHING PATTERN "*.h")
  endforeach()
endfunction()

# The host and the module file are installed together, since the host loads
# module files from its own folder; both find the platform library relative to
# that folder.
file(RELATIVE_PATH _kov_bin_to_lib ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
function(kov_install_beside_host target)
  set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN/${_kov_bin_to_lib}")
  install(TARGETS ${target} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} LIBRARY DESTINATION ${CMAKE_INSTALL_BINDIR})
endfunction()

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
    kov_root_includes(${target} PUBLIC)
    target_link_libraries(${target} PUBLIC ${ARGN})
    kov_strict_warnings(${target})
  else()
    add_library(${target} INTERFACE)
    kov_root_includes(${target} INTERFACE)
    target_link_libraries(${target} INTERFACE ${ARGN})
  endif()
  kov_install_library(${target} ${dir})
endfunction()
