# The package lumo-bridge-linuxcnc: the bridge to LinuxCNC, its configuration, and the programs that run beside it, which
# have a licence of their own.
install(TARGETS lumo-linuxcnc LIBRARY DESTINATION ${private_libraries} COMPONENT linuxcnc)
set_target_properties(lumo-linuxcnc PROPERTIES INSTALL_RPATH "$ORIGIN")
install(DIRECTORY ${CMAKE_SOURCE_DIR}/bridge/linuxcnc/cell DESTINATION ${CMAKE_INSTALL_DATADIR}/lumo/linuxcnc
  COMPONENT linuxcnc USE_SOURCE_PERMISSIONS PATTERN __pycache__ EXCLUDE)
install(PROGRAMS ${CMAKE_SOURCE_DIR}/bridge/linuxcnc/start.py DESTINATION ${CMAKE_INSTALL_BINDIR} RENAME lumo-linuxcnc
  COMPONENT linuxcnc)

set(linuxcnc_doc ${CMAKE_INSTALL_DATADIR}/doc/lumo-bridge-linuxcnc)
file(READ copyright common_copyright)
file(READ copyright.linuxcnc own_copyright)
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/linuxcnc/copyright "${common_copyright}${own_copyright}")
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/linuxcnc/copyright ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz
  DESTINATION ${linuxcnc_doc} COMPONENT linuxcnc)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/lumo-linuxcnc.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT linuxcnc)
add_dependencies(installable lumo-linuxcnc)

list(APPEND CPACK_COMPONENTS_ALL linuxcnc)
set(CPACK_DEBIAN_LINUXCNC_PACKAGE_NAME lumo-bridge-linuxcnc)
set(CPACK_DEBIAN_LINUXCNC_DESCRIPTION
"robot laser welding: motion and outputs by LinuxCNC
Lets the programs of the package lumo drive a six-axis arm by LinuxCNC instead
of the simulated robot: a configuration of LinuxCNC, two programs that run
beside it, and a deadline that switches laser, gas and wire off when the panel
is killed, hangs or is cut off.")
set(CPACK_DEBIAN_LINUXCNC_PACKAGE_SECTION science)
set(CPACK_DEBIAN_LINUXCNC_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_LINUXCNC_PACKAGE_DEPENDS "lumo (= ${PROJECT_VERSION}), linuxcnc-uspace, python3")
