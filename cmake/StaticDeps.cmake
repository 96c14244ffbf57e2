# Links omniORB, omnithread and jansson from the static archives of their
# Debian -dev packages, and the C++ runtime from GCC's, instead of their
# shared libraries: a run then loads only the C library and SQLite, and the
# dynamic loader no longer spends most of every start-up resolving symbols
# (docs/performance.md). SQLite stays shared: Debian's security updates reach
# it only there, and lintian refuses an embedded copy.
#
# The archives are not position-independent, so every program is linked as
# a fixed-address executable; --gc-sections drops the archive sections the
# program never reaches. Our own code keeps default visibility: a fixed-address
# executable exports nothing unless asked to. The sanitizer build keeps the
# shared C++ runtime, whose allocation functions the sanitizers replace.
option(STASHWELL_STATIC_DEPS "Link omniORB, omnithread, jansson and the C++ runtime statically" ON)
if(NOT STASHWELL_STATIC_DEPS)
  return()
endif()

# sw_static_archive(VAR NAME...): the full path of lib<NAME>.a for each NAME.
function(sw_static_archives var)
  set(paths)
  foreach(name ${ARGN})
    find_library(SW_ARCHIVE_${name} NAMES lib${name}.a REQUIRED)
    list(APPEND paths ${SW_ARCHIVE_${name}})
  endforeach()
  set(${var} ${paths} PARENT_SCOPE)
endfunction()

# Order matters for a static link: omniDynamic uses omniORB, which uses
# omnithread.
sw_static_archives(omniorb_archives omniDynamic4 omniORB4 omnithread)
set_property(TARGET PkgConfig::OMNIORB PROPERTY
  INTERFACE_LINK_LIBRARIES ${omniorb_archives} Threads::Threads)
sw_static_archives(jansson_archive jansson)
set_property(TARGET PkgConfig::JANSSON PROPERTY INTERFACE_LINK_LIBRARIES ${jansson_archive})

add_link_options(-no-pie -Wl,--gc-sections)
if(NOT STASHWELL_SANITIZE)
  add_link_options(-static-libstdc++ -static-libgcc)
endif()
