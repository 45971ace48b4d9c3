# What `cmake --install` puts where. The program finds its translation databases, which users may replace, and the
# simulated unit beside itself; in bin is a link to it.
include(GNUInstallDirs)

set(velk_folder ${CMAKE_INSTALL_LIBDIR}/velk)
install(TARGETS velk velk_jet_reader velk_sim_unit RUNTIME DESTINATION ${velk_folder})
install(FILES "${CMAKE_BINARY_DIR}/src/shell/VELK Translation Data.mdb" "${CMAKE_BINARY_DIR}/src/shell/VELKMESSAGES.MDB"
        DESTINATION ${velk_folder})
file(RELATIVE_PATH velk_from_bin /${CMAKE_INSTALL_BINDIR} /${velk_folder}/velk)
install(CODE "
  set(bin \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
  file(MAKE_DIRECTORY \"\${bin}\")
  file(CREATE_LINK \"${velk_from_bin}\" \"\${bin}/velk\" SYMBOLIC)")
install(FILES ${CMAKE_SOURCE_DIR}/data/install/velk.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${CMAKE_SOURCE_DIR}/data/icons/velk.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)

# The texts of the licences are those of the system that the program is built on.
set(licences /usr/share/common-licenses)
install(FILES ${CMAKE_SOURCE_DIR}/data/install/licences.txt ${licences}/GPL-3 ${licences}/LGPL-3 ${licences}/LGPL-2.1
        DESTINATION ${CMAKE_INSTALL_DOCDIR})
