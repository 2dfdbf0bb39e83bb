#include "entry/Eliminacion.h"

#include "platform/contract/cConstNodo.h"
#include "framework/Mensajes.h"
#include "framework/Plataforma.h"
#include "framework/ServiciosHost.h"
#include "platform/automation/Conversion.h"

#include <algorithm>
#include <array>

namespace Eliminacion {

namespace {

// The statements are built to the letter, with the double blanks that the filter's own leading blank makes.
constexpr const char* consultaProvincias =
    "SELECT codProvincia FROM Colaboradores WHERE Colaboradores.CodProvincia={ID} AND  Eliminado=0"
    " UNION SELECT CodProvincia FROM Emisores WHERE Emisores.CodProvincia={ID} AND  Eliminado=0"
    " UNION SELECT CodProvincia FROM Sucursales WHERE Sucursales.CodProvincia={ID} AND  Eliminado=0";

// In front of the above, except in installations where a diocese does not hold its province back.
constexpr const char* consultaDiocesisDeProvincia =
    "SELECT codProvincia FROM Diocesis WHERE Diocesis.CodProvincia={ID} AND  Eliminado=0 UNION ";

constexpr cConstNodo nodo{};

constexpr std::array reglas{
    Regla{nodo.Usuarios(), "Usuarios", "IDUsuario"},
    Regla{nodo.Bancos(), "Bancos", "IDBanco",
          "SELECT Cuentas.CodSucursal FROM Cuentas,Sucursales WHERE Cuentas.CodSucursal=Sucursales.IDSucursal AND "
          "Sucursales.CodBanco={ID} AND Cuentas.Eliminado=False AND Sucursales.Eliminado=false "
          "UNION SELECT Presentadores.CodSucursal FROM Presentadores WHERE Presentadores.Eliminado=false AND "
          "Presentadores.CodBanco={ID}",
          "UPDATE Sucursales SET Eliminado=-1 WHERE CodBanco={ID}"},
    Regla{nodo.Cabeceras(), "Cabeceras", "IDCabecera"},
    Regla{nodo.CartasModelo(), "CartasModelo", "IDCartaModelo"},
    Regla{nodo.Diocesis(), "Diocesis", "IDDiocesis",
          "SELECT IDColaborador FROM Colaboradores WHERE CodDiocesis={ID} AND  Eliminado=0"},
    Regla{nodo.Publicaciones(), "TipoPublicaciones", "IDTipoPublicacion",
          "SELECT IDSuscripcion FROM Suscripciones WHERE CodTipoPublicacion={ID} AND  Eliminado=0"},
    Regla{nodo.Provincias(), "Provincias", "IDProvincia", consultaProvincias},
    Regla{nodo.Paises(), "Paises", "IDPais",
          "SELECT codpais FROM provincias WHERE Provincias.Codpais={ID} AND  Eliminado=0"
          " UNION SELECT codpais FROM Colaboradores WHERE Colaboradores.codpais={ID} AND  Eliminado=0"},
    Regla{nodo.TipoDeduccion(), "TipoDeducciones", "IDTipoDeduccion",
          "SELECT CodTipoDeduccionFisica AS CodTipoDeduccion FROM TipoDonativos WHERE  Eliminado=0 AND "
          "(CodTipoDeduccionFisica={ID} OR CodTipoDeduccionJuridica={ID})"},
    Regla{nodo.TipoDonativos(), "TipoDonativos", "IDTipoDonativo",
          "SELECT IDDonativo FROM Donativos WHERE  Eliminado=0 AND CodTipoDonativo={ID}"},
    // The accounts of the issuer's links stay live; that is intended.
    Regla{nodo.Emisores(), "Emisores", "IDEmisor",
          "SELECT IDEmisor_Cuenta FROM Emisores_Cuentas,Recibos WHERE "
          "Emisores_Cuentas.CodEmisor={ID} AND Emisores_Cuentas.Eliminado=false AND "
          "Emisores_Cuentas.IDEmisor_Cuenta=Recibos.CodEmisor_Cuenta AND Recibos.Eliminado=false "
          "UNION SELECT IDEmisor_Cuenta FROM Emisores_Cuentas,RecibosPendientes WHERE "
          "Emisores_Cuentas.CodEmisor={ID} AND Emisores_Cuentas.Eliminado=false AND "
          "Emisores_Cuentas.IDEmisor_Cuenta=RecibosPendientes.CodEmisor_Cuenta AND RecibosPendientes.Eliminado=false "
          "UNION SELECT IDEmisor_Cuenta FROM Emisores_Cuentas,Donativos WHERE "
          "Emisores_Cuentas.CodEmisor={ID} AND Emisores_Cuentas.Eliminado=false AND "
          "Emisores_Cuentas.IDEmisor_Cuenta=Donativos.CodEmisor_Cuenta AND Donativos.Eliminado=false "
          "UNION SELECT IDEmisor_Cuenta FROM Emisores_Cuentas,Suscripciones WHERE "
          "Emisores_Cuentas.CodEmisor={ID} AND Emisores_Cuentas.Eliminado=false AND "
          "Emisores_Cuentas.IDEmisor_Cuenta=Suscripciones.CodEmisor_Cuenta AND Suscripciones.Eliminado=false ",
          "UPDATE Emisores_Cuentas SET Eliminado=-1 WHERE CodEmisor={ID}"},
    Regla{nodo.Presentadores(), "Presentadores", "IDPresentador",
          "SELECT CodPresentador FROM Emisores WHERE Emisores.Eliminado=false AND Emisores.CodPresentador={ID} UNION "
          "SELECT CodPresentador FROM Discos WHERE Discos.Eliminado=false AND Discos.CodPresentador={ID} UNION "
          "SELECT CodPresentador FROM Remesas_Presentadores_Discos WHERE Remesas_Presentadores_Discos.Eliminado=false "
          "AND Remesas_Presentadores_Discos.CodPresentador={ID}"},
    Regla{nodo.Cobradores(), "Cobradores", "IDCobrador",
          "SELECT IDColaborador FROM Colaboradores WHERE  Eliminado=0 AND CodCobrador={ID}"},
    Regla{nodo.Etiquetas(), "Etiquetas", "IDEtiqueta", nullptr,
          "UPDATE EtiquetasCampos SET Eliminado=-1 WHERE  Eliminado=0 AND CodEtiqueta={ID}"},
    Regla{nodo.DeduccionesComunidad(), "Deduccion_Comunidad", "IDDeduccion_Comunidad",
          "SELECT IDDonativo FROM Donativos WHERE  Eliminado=0 AND CodDeduccion_Comunidad={ID}"},
    Regla{nodo.ComunidadAutonoma(), "ComunidadAutonoma", "IDComunidad",
          "SELECT IDDeduccion_Comunidad FROM Deduccion_Comunidad WHERE  Eliminado=0 AND CodComunidad={ID}"},
};

QString ConID(QString statement, qint32 id) {
  return statement.replace(QLatin1String("{ID}"), QString::number(id));
}

bool EsAdministrador(adodb::Connection& connection, qint32 id) {
  const auto rs =
      connection.Execute(ConID(QStringLiteral("SELECT Administrador FROM Usuarios WHERE IDUsuario={ID}"), id));
  const bool administrator = automation::CBool(rs->Field(u"ADMINISTRADOR"));
  rs->Close();
  return administrator;
}

bool TieneReferencias(adodb::Connection& connection, const Regla& regla, qint32 id) {
  if (regla.consulta == nullptr) {
    return false;
  }
  QString consulta = QString::fromLatin1(regla.consulta);
  if (regla.nodo == nodo.Provincias() && !objApi().velumar()) {
    consulta.prepend(QLatin1String(consultaDiocesisDeProvincia));
  }
  const auto rs = connection.Execute(ConID(consulta, id));
  const bool found = !rs->AtEnd();
  rs->Close();
  return found;
}

}  // namespace

std::span<const Regla> Reglas() {
  return reglas;
}

Resultado Eliminar(qint32 nodoPedido, qint32 id) {
  const auto regla = std::ranges::find(reglas, nodoPedido, &Regla::nodo);
  if (regla == reglas.end()) {
    return Resultado::Hecha;
  }
  adodb::Connection& connection = objApi().congestion();
  if (nodoPedido == nodo.Usuarios() && EsAdministrador(connection, id)) {
    MensajeConAviso(104, vbCritical);
    return Resultado::Rechazada;
  }
  if (TieneReferencias(connection, *regla, id)) {
    MensajeConAviso(103, vbExclamation);
    return Resultado::Rechazada;
  }
  if (regla->cascada != nullptr) {
    connection.Execute(ConID(QString::fromLatin1(regla->cascada), id));
  }
  connection.Execute(ConID(QStringLiteral("UPDATE %1 SET Eliminado=-1 WHERE %2={ID}")
                               .arg(QLatin1String(regla->tabla), QLatin1String(regla->clave)),
                           id));
  return Resultado::Hecha;
}

}  // namespace Eliminacion
