#include "banking/frmBanco.h"

#include "banking/frmSucursal.h"
#include "framework/GridKeys.h"
#include "framework/Mensajes.h"
#include "framework/Plataforma.h"
#include "resources/Cadenas.h"
#include "ui_frmBanco.h"

#include <algorithm>

using resources::LoadResString;

namespace {

// Widths of the grid's columns until the user has chosen others; the last takes what is left.
constexpr int columnCharacters[] = {9, 20, 26};

}  // namespace

frmBanco::frmBanco()
    : FormularioMantenimiento({.nombre = QStringLiteral("frmBanco"),
                               .clave = QStringLiteral("IDBanco"),
                               .cadenaGuardar = 1101,
                               .cadenaError = 1102}) {}

frmBanco::~frmBanco() = default;

void frmBanco::CrearControles() {
  m_ui = std::make_unique<Ui::frmBanco>();
  m_ui->setupUi(this);
  m_sucursales.clear();
  m_modelo = new SucursalesModel(m_sucursales, m_ui->msgSucursales);
  m_ui->msgSucursales->setModel(m_modelo);
  int column = 0;
  for (const int characters : columnCharacters) {
    m_ui->msgSucursales->setColumnWidth(column++, characters * fontMetrics().averageCharWidth());
  }
  SeleccionarAlEnfocar(m_ui->txtBanco_0);
  SeleccionarAlEnfocar(m_ui->txtBanco_1);
  OnClick(std::array{m_ui->cmdBanco_0, m_ui->cmdBanco_1, m_ui->cmdBanco_2, m_ui->cmdBanco_3, m_ui->cmdBanco_4},
          [this](int index) { cmdBanco_Click(index); });
  auto* keys = new GridKeys(m_ui->msgSucursales);
  On(keys, &GridKeys::Add, [this] { cmdBanco_Click(0); });
  On(keys, &GridKeys::Modify, [this] { cmdBanco_Click(1); });
  On(keys, &GridKeys::Delete, [this] { cmdBanco_Click(2); });
  On(m_ui->msgSucursales, &QTableView::clicked, [this](const QModelIndex& cell) { Seleccionar(cell.row()); });
}

QAbstractButton* frmBanco::BotonAceptar() const {
  return m_ui->cmdBanco_3;
}

QTableView* frmBanco::Rejilla() const {
  return m_ui->msgSucursales;
}

bool frmBanco::Cargar() {
  const int action = objApi().Accion();
  if (EsAlta()) {
    SetCaption(LoadResString(1100));
  } else if (action == ConstAccion().Modificar()) {
    adodb::Connection& connection = objApi().congestion();
    const qint32 id = objApi().IDSeleccionado();
    const BancoBD::Banco banco = BancoBD::LeerBanco(connection, id);
    m_ui->txtBanco_0->setText(banco.Numero);
    m_ui->txtBanco_1->setText(banco.Nombre);
    SetCaption(LoadResString(1105) + banco.Nombre);
    m_sucursales = BancoBD::LeerSucursales(connection, id);
    m_modelo->Refresh();
    BloquearRegistro();
  }
  return true;
}

void frmBanco::cmdBanco_Click(int index) {
  switch (index) {
    case 0:
      AgregarSucursal();
      break;
    case 1:
      ModificarSucursal();
      break;
    case 2:
      EliminarSucursal();
      break;
    case 3:
      Aceptar();
      break;
    default:
      CancelarYCerrar();
      break;
  }
}

void frmBanco::AgregarSucursal() {
  auto sucursal = std::make_shared<cSucursal>();
  sucursal->IDSucursal = SiguienteIdTemporal();
  if (Editar(sucursal, ConstAccion().Agregar())) {
    m_sucursales.push_back(sucursal);
    Mostrar(sucursal);
  }
}

void frmBanco::ModificarSucursal() {
  const std::shared_ptr<cSucursal> sucursal = ExigirSeleccion();
  if (sucursal && Editar(sucursal, ConstAccion().Modificar())) {
    Mostrar(sucursal);
  }
}

// True when the user accepted what the branch dialog then left in the branch.
bool frmBanco::Editar(const std::shared_ptr<cSucursal>& sucursal, quint8 accion) {
  frmSucursal dialog;
  dialog.Abrir({.sucursal = sucursal, .sucursales = &m_sucursales, .accion = accion, .banco = Tecleado()});
  dialog.ShowModal();
  return dialog.Aceptado();
}

void frmBanco::Mostrar(const std::shared_ptr<cSucursal>& sucursal) {
  m_modelo->Refresh();
  Seleccionar(m_modelo->RowOf(sucursal));
}

void frmBanco::EliminarSucursal() {
  const std::shared_ptr<cSucursal> sucursal = ExigirSeleccion();
  if (!sucursal) {
    return;
  }
  if (MensajeConAviso(1104, vbYesNo + vbQuestion) != vbYes) {
    return;
  }
  try {
    if (sucursal->ExisteEnBD && BancoBD::SucursalEnUso(objApi().congestion(), sucursal->IDSucursal)) {
      MensajeConAviso(1110, vbCritical);
      return;
    }
  } catch (...) {
    MensajeError(Ficha().cadenaError, automation::CurrentError());
    return;
  }
  const int row = m_modelo->RowOf(sucursal);
  if (sucursal->ExisteEnBD) {
    sucursal->Estado = ConstAccion().Eliminar();
  } else {
    std::erase(m_sucursales, sucursal);
  }
  m_modelo->Refresh();
  Seleccionar(std::min(row, m_modelo->rowCount() - 1));
}

void frmBanco::Aceptar() {
  if (!ConfirmarCampos()) {
    return;
  }
  for (QLineEdit* box : {m_ui->txtBanco_0, m_ui->txtBanco_1}) {
    if (box->text().trimmed().isEmpty()) {
      MensajeConAviso(1111, vbExclamation);
      box->setFocus();
      return;
    }
  }
  if (Guardar()) {
    Unload();
  }
}

// False when the user was told why nothing was written. Messages wait until the form takes input again.
bool frmBanco::Guardar() {
  try {
    if (!Escribir()) {
      MensajeConAviso(1112, vbCritical);
      return false;
    }
  } catch (...) {
    MensajeError(Ficha().cadenaError, automation::CurrentError());
    return false;
  }
  return true;
}

// False when another live bank has the number.
bool frmBanco::Escribir() {
  const EntradaDesactivada writing(this);
  adodb::Connection& connection = objApi().congestion();
  const BancoBD::Banco banco = Tecleado();
  if (BancoBD::NumeroEnUso(connection, banco.Numero, objApi().IDSeleccionado())) {
    return false;
  }
  if (EsAlta()) {
    DevolverNuevo(BancoBD::InsertarBanco(connection, banco, m_sucursales));
  } else if (objApi().Accion() == ConstAccion().Modificar()) {
    BancoBD::ModificarBanco(connection, objApi().IDSeleccionado(), banco, m_sucursales);
  }
  return true;
}

BancoBD::Banco frmBanco::Tecleado() const {
  return {m_ui->txtBanco_0->text(), m_ui->txtBanco_1->text()};
}

// The selected branch; null, and the user told, when there is none.
std::shared_ptr<cSucursal> frmBanco::ExigirSeleccion() const {
  const QModelIndexList rows = m_ui->msgSucursales->selectionModel()->selectedRows();
  if (rows.isEmpty()) {
    MensajeConAviso(1103, vbExclamation);
    return nullptr;
  }
  return m_modelo->At(rows.first().row());
}

void frmBanco::Seleccionar(int row) {
  ServiciosHost::Nuevo().SeleccionarFila(m_ui->msgSucursales, row);
}

// Branches that are not in the database yet count down from -1.
qint32 frmBanco::SiguienteIdTemporal() const {
  qint32 lowest = 0;
  for (const std::shared_ptr<cSucursal>& sucursal : m_sucursales) {
    lowest = std::min(lowest, sucursal->IDSucursal);
  }
  return lowest - 1;
}
