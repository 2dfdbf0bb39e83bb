#include "entry/Despacho.h"

#include "banking/frmBanco.h"
#include "banking/frmSucursal.h"
#include "framework/Mensajes.h"
#include "framework/Plataforma.h"
#include "framework/ServiciosHost.h"
#include "reference/frmPais.h"
#include "reference/frmProvincia.h"

#include <algorithm>
#include <map>

namespace Despacho {

namespace {

template <typename Dialogo>
std::unique_ptr<Formulario> Crear() {
  return std::make_unique<Dialogo>();
}

// A dialog's default instance is made by its first use and lives until it is released.
std::map<QString, std::unique_ptr<Formulario>>& Instancias() {
  static std::map<QString, std::unique_ptr<Formulario>> instances;
  return instances;
}

Formulario& Instancia(const Entrada& entrada) {
  std::unique_ptr<Formulario>& instance = Instancias()[entrada.dialogo];
  if (!instance) {
    instance = entrada.crear();
  }
  return *instance;
}

// Releases the row's default instance, whichever way the dialog ended.
class Liberacion {
 public:
  explicit Liberacion(const Entrada& entrada) : m_entrada(entrada) {}
  Liberacion(const Liberacion&) = delete;
  Liberacion& operator=(const Liberacion&) = delete;
  ~Liberacion() {
    Plataforma::Current().DoEvents();
    Instancias().erase(m_entrada.liberado);
  }

 private:
  const Entrada& m_entrada;
};

void MostrarModal(const Entrada& entrada) {
  const Liberacion release(entrada);
  Instancia(entrada).ShowModal();
}

void MostrarConCargaGuardada(const Entrada& entrada) {
  const Liberacion release(entrada);
  Formulario& dialog = Instancia(entrada);
  {
    const Hourglass hourglass;
    dialog.Load();
  }
  dialog.ShowModal();
}

Resultado Mostrar(const Entrada& entrada) {
  if (entrada.apertura == Apertura::ConImpresora && Plataforma::Current().PrinterCount() == 0) {
    MensajeConAviso(102, vbInformation);
    return Resultado::SinImpresora;
  }
  if (entrada.apertura == Apertura::CargaGuardadaConRegistro && objApi().IDSeleccionado() == 0) {
    return Resultado::Hecho;
  }
  if (entrada.crear == nullptr) {
    MensajeTexto(QStringLiteral("El formulario «%1» no está disponible en esta versión.").arg(entrada.dialogo),
                 vbInformation);
    return Resultado::Hecho;
  }
  const bool guarded =
      entrada.apertura == Apertura::CargaGuardada || entrada.apertura == Apertura::CargaGuardadaConRegistro;
  guarded ? MostrarConCargaGuardada(entrada) : MostrarModal(entrada);
  return Resultado::Hecho;
}

Entrada Fila(const QVariant& nodo, const char* dialogo, Apertura apertura, std::unique_ptr<Formulario> (*crear)(),
             const char* liberado = nullptr) {
  return {nodo, QString::fromLatin1(dialogo), apertura, crear,
          QString::fromLatin1(liberado != nullptr ? liberado : dialogo)};
}

}  // namespace

std::span<const Entrada> Tabla() {
  using enum Apertura;
  static const cConstNodo nodo{};
  static const std::array tabla{
      Fila(nodo.Bancos(), "frmBanco", CargaGuardada, &Crear<frmBanco>),
      Fila(nodo.Sucursales(), "frmSucursal", Modal, &Crear<frmSucursal>),
      Fila(nodo.Cabeceras(), "frmCabecera", Modal, nullptr),
      Fila(nodo.CartasModelo(), "frmCartaModelo", ConImpresora, nullptr),
      Fila(nodo.Diocesis(), "frmDiocesis", Modal, nullptr),
      Fila(nodo.Emisores(), "frmEmisor", Modal, nullptr),
      Fila(nodo.Paises(), "frmPais", Modal, &Crear<frmPais>),
      Fila(nodo.Presentadores(), "frmPresentador", Modal, nullptr),
      Fila(nodo.Cobradores(), "frmCobrador", Modal, nullptr),
      Fila(nodo.Provincias(), "frmProvincia", Modal, &Crear<frmProvincia>),
      Fila(nodo.Publicaciones(), "frmPublicacion", Modal, nullptr),
      Fila(nodo.TipoDonativos(), "frmTipoDonativo", Modal, nullptr),
      Fila(nodo.TipoDeduccion(), "frmTipoDeduccion", Modal, nullptr),
      Fila(nodo.Etiquetas(), "frmEtiquetas1", Modal, nullptr),
      // Intended: never reached, for the same node stands above.
      Fila(nodo.Cobradores(), "frmCobrador", CargaGuardada, nullptr),
      // Intended: the release clears the deduction type's dialog; this one's own default instance stays.
      Fila(nodo.DeduccionesComunidad(), "frmDeduccionComunidad", Modal, nullptr, "frmTipoDeduccion"),
      Fila(nodo.ComunidadAutonoma(), "frmComunidadAutonoma", Modal, nullptr),
      Fila(nodo.Encabezados(), "frmEncabezado", CargaGuardadaConRegistro, nullptr),
  };
  return tabla;
}

Resultado MostrarDialogo(qint32 nodo) {
  const std::span<const Entrada> tabla = Tabla();
  const auto found =
      std::ranges::find_if(tabla, [&](const Entrada& entrada) { return entrada.nodo == QVariant(nodo); });
  return found == tabla.end() ? Resultado::Hecho : Mostrar(*found);
}

}  // namespace Despacho
