# The package lumo-bridge-modbus: the library that a program loads for an I/O device, lumo-modbus, and an example map.
set(modbus_doc ${CMAKE_INSTALL_DATADIR}/doc/lumo-bridge-modbus)
set_target_properties(lumo-modbus PROPERTIES INSTALL_RPATH "$ORIGIN/${from_programs}")
set_target_properties(bridge_modbus PROPERTIES INSTALL_RPATH "$ORIGIN/..")
add_dependencies(installable lumo-modbus bridge_modbus)

install(TARGETS lumo-modbus RUNTIME COMPONENT modbus)
install(TARGETS bridge_modbus LIBRARY DESTINATION ${private_libraries}/bridges COMPONENT modbus)
install(FILES ${CMAKE_SOURCE_DIR}/bridge/modbus/modbus_map.json DESTINATION ${modbus_doc}/examples COMPONENT modbus)
install(FILES copyright ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz DESTINATION ${modbus_doc} COMPONENT modbus)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/lumo-modbus.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
  COMPONENT modbus)

list(APPEND CPACK_COMPONENTS_ALL modbus)
set(CPACK_DEBIAN_MODBUS_PACKAGE_NAME lumo-bridge-modbus)
set(CPACK_DEBIAN_MODBUS_DESCRIPTION
"robot laser welding: inputs and outputs on a Modbus TCP device
Brings the registers, inputs and outputs of the laser-welding package lumo to
a device that speaks Modbus TCP: which one lies where is said by a map. A
heartbeat lets the device switch off by itself. The program lumo-modbus shows
a device's values and writes its outputs while a cell is put into service.")
set(CPACK_DEBIAN_MODBUS_PACKAGE_SECTION science)
set(CPACK_DEBIAN_MODBUS_PACKAGE_DEPENDS "lumo (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_MODBUS_PACKAGE_SHLIBDEPS ON)
