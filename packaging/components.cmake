# What each package takes, read by CPack once for each of them.
if(CPACK_GENERATOR STREQUAL DEB)
    set(CPACK_COMPONENTS_ALL common debian ${CPACK_MORLIK_DEB_PROGRAMS})
else()
    set(CPACK_COMPONENTS_ALL common archive programs)
    set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)
endif()
