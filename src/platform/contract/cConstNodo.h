#pragma once

#include <QVariant>

/// The nodes (entities) of the host's tree, by name. The numbers are part of the contract between host and component.
class cConstNodo {
 public:
  constexpr qint32 Colaboradores() const { return 3; }
  constexpr qint32 Donativos() const { return 4; }
  constexpr qint32 Suscripciones() const { return 5; }
  constexpr qint32 RecibosCobro() const { return 8; }
  constexpr qint32 RecibosHistorico() const { return 9; }
  constexpr qint32 RemesasAEnviar() const { return 12; }
  constexpr qint32 RemesasEnviadas() const { return 13; }
  constexpr qint32 RemesasRecibidas() const { return 11; }
  constexpr qint32 Cabeceras() const { return 15; }
  constexpr qint32 Diocesis() const { return 16; }
  constexpr qint32 TipoDonativos() const { return 17; }
  constexpr qint32 Emisores() const { return 18; }
  constexpr qint32 Bancos() const { return 19; }
  constexpr qint32 Paises() const { return 20; }
  constexpr qint32 Presentadores() const { return 21; }
  constexpr qint32 Provincias() const { return 22; }
  constexpr qint32 Usuarios() const { return 24; }
  constexpr qint32 Publicaciones() const { return 25; }
  constexpr qint32 CartasModelo() const { return 26; }
  constexpr qint32 TipoDeduccion() const { return 27; }
  /// Intended: never assigned, and the host relies on 0 for the branch editor.
  constexpr qint32 Sucursales() const { return 0; }
  constexpr qint32 MensajesPendientes() const { return 28; }
  constexpr qint32 MensajesHistoricos() const { return 29; }
  constexpr qint32 Etiquetas() const { return 30; }
  constexpr qint32 PagosVarios() const { return 31; }
  constexpr qint32 Cobradores() const { return 32; }
  constexpr qint32 DeduccionesComunidad() const { return 34; }
  constexpr qint32 ComunidadAutonoma() const { return 35; }
  QVariant Encabezados() const { return 36; }
  constexpr qint32 ColaboradoresPotenciales() const { return 37; }
  constexpr qint32 Poblaciones() const { return 38; }
  /// Out of the range of the others on purpose.
  constexpr qint32 SuscriptoresDependientes() const { return 999999999; }
};
