# The Debian packages, one for each component; `./kel package` makes and tries them.

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL library development host)
set(CPACK_PACKAGE_NAME kel)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR Kel)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "Kel <kel@kel.invalid>")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})

# kel_package(<component> <name> <section> <summary> <description> [<depends> [<recommends> [<suggests>]]]): the component as a
# package.
# What all packages say of themselves goes into it, too.
function(kel_package component name section summary description)
  string(TOUPPER ${component} key)
  set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${name} PARENT_SCOPE)
  set(CPACK_DEBIAN_${key}_PACKAGE_SECTION ${section} PARENT_SCOPE)
  set(CPACK_DEBIAN_${key}_DESCRIPTION "${summary}\n${description}" PARENT_SCOPE)
  set(CPACK_DEBIAN_${key}_PACKAGE_DEPENDS "${ARGV5}" PARENT_SCOPE)
  set(CPACK_DEBIAN_${key}_PACKAGE_RECOMMENDS "${ARGV6}" PARENT_SCOPE)
  set(CPACK_DEBIAN_${key}_PACKAGE_SUGGESTS "${ARGV7}" PARENT_SCOPE)
  set(folder ${CMAKE_INSTALL_DATADIR}/doc/${name})
  kel_compressed(changes debian/changelog changelog.Debian)
  install(FILES debian/copyright ${changes} DESTINATION ${folder} COMPONENT ${component})
  if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/debian/${name}.lintian-overrides)
    install(FILES debian/${name}.lintian-overrides RENAME ${name}
      DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides COMPONENT ${component})
  endif()
endfunction()

set(libraries "libkel${PROJECT_VERSION_MAJOR}")
set(same_version "(= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
kel_package(library ${libraries} libs "donor management dialogs - component and libraries"
"The configuration and master-data dialogs of a donor management suite for
Spanish charities and church organisations: banks, remittance parties,
countries and provinces, tax deductions, publications, label sheets.
.
A program that wants to show them creates the component by its name.")
# Who links the libraries depends on their package; the loader's cache learns of them by a trigger, without a script.
set(control ${CMAKE_CURRENT_BINARY_DIR}/control)
file(CONFIGURE OUTPUT ${control}/triggers CONTENT "activate-noawait ldconfig\n")
file(CONFIGURE OUTPUT ${control}/shlibs CONTENT
"libKelPlataforma ${PROJECT_VERSION_MAJOR} ${libraries} (>= ${PROJECT_VERSION})
libKelDocumentos ${PROJECT_VERSION_MAJOR} ${libraries} (>= ${PROJECT_VERSION})
libKelDatos ${PROJECT_VERSION_MAJOR} ${libraries} (>= ${PROJECT_VERSION})
")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${control}/triggers ${control}/shlibs)
kel_package(development libkel-dev libdevel "donor management dialogs - development files"
"Headers, CMake and pkg-config files, the contract between a host and the
component, and examples, for programs that show the configuration and
master-data dialogs of a donor management suite."
  "${libraries} ${same_version}, qt6-base-dev (>= 6.4)")
kel_package(host kel-host misc "configuration and master data of a charity's donor management"
"A desktop application for the master data that a Spanish charity or church
organisation needs for its donations, collaborators and subscriptions:
banks, remittance parties, countries and provinces, tax deductions,
publications, letters and sheets of labels.
.
The database is a file, or stands on a PostgreSQL server."
  "${libraries} ${same_version}, fonts-liberation" "qt6-translations-l10n, xdg-utils" "postgresql (>= 15)")
include(CPack)
