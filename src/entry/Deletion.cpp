#include "entry/Deletion.h"

#include "framework/Database.h"
#include "framework/Desktop.h"
#include "framework/HostServices.h"
#include "framework/Messages.h"
#include "platform/automation/Conversion.h"
#include "platform/contract/cConstNodo.h"

#include <algorithm>
#include <array>

using namespace framework;

namespace entry::deletion {

namespace {

constexpr cConstNodo node;

// The two blanks before some of the marks are the statements' own.
constexpr RecordStatement ProvinceReferences =
    u"SELECT codProvincia FROM Colaboradores WHERE Colaboradores.CodProvincia={0} AND  Eliminado=0"
    u" UNION SELECT CodProvincia FROM Emisores WHERE Emisores.CodProvincia={0} AND  Eliminado=0"
    u" UNION SELECT CodProvincia FROM Sucursales WHERE Sucursales.CodProvincia={0} AND  Eliminado=0";

// Installations of the other kind: there a diocese holds its province back, too.
constexpr RecordStatement ProvinceReferencesWithDioceses =
    u"SELECT codProvincia FROM Diocesis WHERE Diocesis.CodProvincia={0} AND  Eliminado=0"
    u" UNION SELECT codProvincia FROM Colaboradores WHERE Colaboradores.CodProvincia={0} AND  Eliminado=0"
    u" UNION SELECT CodProvincia FROM Emisores WHERE Emisores.CodProvincia={0} AND  Eliminado=0"
    u" UNION SELECT CodProvincia FROM Sucursales WHERE Sucursales.CodProvincia={0} AND  Eliminado=0";

constexpr std::array rules{
    Rule{.node = node.Usuarios(), .table = u"Usuarios", .key = u"IDUsuario"},
    Rule{.node = node.Bancos(),
         .table = u"Bancos",
         .key = u"IDBanco",
         .references = RecordStatement(
             u"SELECT Cuentas.CodSucursal FROM Cuentas,Sucursales WHERE Cuentas.CodSucursal=Sucursales.IDSucursal AND "
             u"Sucursales.CodBanco={0} AND Cuentas.Eliminado=False AND Sucursales.Eliminado=false "
             u"UNION SELECT Presentadores.CodSucursal FROM Presentadores WHERE Presentadores.Eliminado=false AND "
             u"Presentadores.CodBanco={0}"),
         .cascade = RecordStatement(u"UPDATE Sucursales SET Eliminado=-1 WHERE CodBanco={0}")},
    Rule{.node = node.Cabeceras(), .table = u"Cabeceras", .key = u"IDCabecera"},
    Rule{.node = node.CartasModelo(), .table = u"CartasModelo", .key = u"IDCartaModelo"},
    Rule{.node = node.Diocesis(),
         .table = u"Diocesis",
         .key = u"IDDiocesis",
         .references =
             RecordStatement(u"SELECT IDColaborador FROM Colaboradores WHERE CodDiocesis={0} AND  Eliminado=0")},
    Rule{.node = node.Publicaciones(),
         .table = u"TipoPublicaciones",
         .key = u"IDTipoPublicacion",
         .references =
             RecordStatement(u"SELECT IDSuscripcion FROM Suscripciones WHERE CodTipoPublicacion={0} AND  Eliminado=0")},
    Rule{.node = node.Provincias(), .table = u"Provincias", .key = u"IDProvincia", .references = ProvinceReferences},
    Rule{.node = node.Paises(),
         .table = u"Paises",
         .key = u"IDPais",
         .references = RecordStatement(
             u"SELECT codpais FROM provincias WHERE Provincias.Codpais={0} AND  Eliminado=0"
             u" UNION SELECT codpais FROM Colaboradores WHERE Colaboradores.codpais={0} AND  Eliminado=0")},
    Rule{.node = node.TipoDeduccion(),
         .table = u"TipoDeducciones",
         .key = u"IDTipoDeduccion",
         .references = RecordStatement(
             u"SELECT CodTipoDeduccionFisica AS CodTipoDeduccion FROM TipoDonativos WHERE  Eliminado=0 AND "
             u"(CodTipoDeduccionFisica={0} OR CodTipoDeduccionJuridica={0})")},
    Rule{.node = node.TipoDonativos(),
         .table = u"TipoDonativos",
         .key = u"IDTipoDonativo",
         .references = RecordStatement(u"SELECT IDDonativo FROM Donativos WHERE  Eliminado=0 AND CodTipoDonativo={0}")},
    // The accounts of the issuer's links stay live; that is intended.
    Rule{.node = node.Emisores(),
         .table = u"Emisores",
         .key = u"IDEmisor",
         .references = RecordStatement(
             u"SELECT IDEmisor_Cuenta FROM Emisores_Cuentas,Recibos WHERE "
             u"Emisores_Cuentas.CodEmisor={0} AND Emisores_Cuentas.Eliminado=false AND "
             u"Emisores_Cuentas.IDEmisor_Cuenta=Recibos.CodEmisor_Cuenta AND Recibos.Eliminado=false "
             u"UNION SELECT IDEmisor_Cuenta FROM Emisores_Cuentas,RecibosPendientes WHERE "
             u"Emisores_Cuentas.CodEmisor={0} AND Emisores_Cuentas.Eliminado=false AND "
             u"Emisores_Cuentas.IDEmisor_Cuenta=RecibosPendientes.CodEmisor_Cuenta AND "
             u"RecibosPendientes.Eliminado=false "
             u"UNION SELECT IDEmisor_Cuenta FROM Emisores_Cuentas,Donativos WHERE "
             u"Emisores_Cuentas.CodEmisor={0} AND Emisores_Cuentas.Eliminado=false AND "
             u"Emisores_Cuentas.IDEmisor_Cuenta=Donativos.CodEmisor_Cuenta AND Donativos.Eliminado=false "
             u"UNION SELECT IDEmisor_Cuenta FROM Emisores_Cuentas,Suscripciones WHERE "
             u"Emisores_Cuentas.CodEmisor={0} AND Emisores_Cuentas.Eliminado=false AND "
             u"Emisores_Cuentas.IDEmisor_Cuenta=Suscripciones.CodEmisor_Cuenta AND Suscripciones.Eliminado=false "),
         .cascade = RecordStatement(u"UPDATE Emisores_Cuentas SET Eliminado=-1 WHERE CodEmisor={0}")},
    Rule{
        .node = node.Presentadores(),
        .table = u"Presentadores",
        .key = u"IDPresentador",
        .references = RecordStatement(
            u"SELECT CodPresentador FROM Emisores WHERE Emisores.Eliminado=false AND Emisores.CodPresentador={0} UNION "
            u"SELECT CodPresentador FROM Discos WHERE Discos.Eliminado=false AND Discos.CodPresentador={0} UNION "
            u"SELECT CodPresentador FROM Remesas_Presentadores_Discos WHERE "
            u"Remesas_Presentadores_Discos.Eliminado=false "
            u"AND Remesas_Presentadores_Discos.CodPresentador={0}")},
    Rule{.node = node.Cobradores(),
         .table = u"Cobradores",
         .key = u"IDCobrador",
         .references =
             RecordStatement(u"SELECT IDColaborador FROM Colaboradores WHERE  Eliminado=0 AND CodCobrador={0}")},
    Rule{.node = node.Etiquetas(),
         .table = u"Etiquetas",
         .key = u"IDEtiqueta",
         .cascade = RecordStatement(u"UPDATE EtiquetasCampos SET Eliminado=-1 WHERE  Eliminado=0 AND CodEtiqueta={0}")},
    Rule{.node = node.DeduccionesComunidad(),
         .table = u"Deduccion_Comunidad",
         .key = u"IDDeduccion_Comunidad",
         .references =
             RecordStatement(u"SELECT IDDonativo FROM Donativos WHERE  Eliminado=0 AND CodDeduccion_Comunidad={0}")},
    Rule{.node = node.ComunidadAutonoma(),
         .table = u"ComunidadAutonoma",
         .key = u"IDComunidad",
         .references = RecordStatement(
             u"SELECT IDDeduccion_Comunidad FROM Deduccion_Comunidad WHERE  Eliminado=0 AND CodComunidad={0}")},
};

adodb::Verbatim Name(const char16_t* name) {
  return {QString::fromUtf16(name)};
}

bool IsAdministrator(qint32 id) {
  const auto rs = Execute(u"SELECT Administrador FROM Usuarios WHERE IDUsuario={}", id);
  const bool administrator = automation::CBool(rs->Field(u"ADMINISTRADOR"));
  rs->Close();
  return administrator;
}

bool IsReferredTo(const Rule& rule, qint32 id) {
  if (!rule.references) {
    return false;
  }
  const bool withDioceses = rule.node == node.Provincias() && !objApi().velumar();
  const RecordStatement& references = withDioceses ? ProvinceReferencesWithDioceses : *rule.references;
  const auto rs = Connection().Execute(references.Text(id));
  const bool found = !rs->AtEnd();
  rs->Close();
  return found;
}

}  // namespace

std::span<const Rule> Rules() {
  return rules;
}

Outcome Delete(qint32 requested, qint32 id) {
  const auto rule = std::ranges::find(rules, requested, &Rule::node);
  if (rule == rules.end()) {
    return Outcome::Done;
  }
  if (requested == node.Usuarios() && IsAdministrator(id)) {
    ShowMessageWithBeep(104, vbCritical);
    return Outcome::Refused;
  }
  if (IsReferredTo(*rule, id)) {
    ShowMessageWithBeep(103, vbExclamation);
    return Outcome::Refused;
  }
  if (rule->cascade) {
    Connection().Execute(rule->cascade->Text(id));
  }
  Execute(u"UPDATE {} SET Eliminado=-1 WHERE {}={}", Name(rule->table), Name(rule->key), id);
  return Outcome::Done;
}

}  // namespace entry::deletion
