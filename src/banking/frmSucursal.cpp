#include "banking/frmSucursal.h"

#include "framework/Controles.h"
#include "framework/FocusWatch.h"
#include "framework/KeyFilter.h"
#include "framework/Mensajes.h"
#include "framework/Plataforma.h"
#include "framework/SolicitudAnidada.h"
#include "framework/Sql.h"
#include "platform/automation/Conversion.h"
#include "reference/frmPais.h"
#include "reference/frmProvincia.h"
#include "resources/Cadenas.h"
#include "ui_frmSucursal.h"

#include <QSignalBlocker>

#include <algorithm>

using resources::LoadResString;

namespace {

constexpr int longestCode = 4;
constexpr int longestPostcode = 5;

// The default country and province were written for another component; their reports keep its name on purpose.
void InformarErrorPorDefecto(const QString& procedure) {
  VerError(automation::CurrentError(), procedure, QStringLiteral("frmSucursal"), QStringLiteral("KelAdministracion"));
}

// The identifier in the first row, 0 without rows.
qint32 PrimerIdentificador(const QString& statement, QStringView field) {
  const auto rs = objApi().congestion().Execute(statement);
  return rs->AtEnd() ? 0 : automation::CLng(rs->Field(field));
}

}  // namespace

frmSucursal::frmSucursal()
    : FormularioMantenimiento(
          {.nombre = QStringLiteral("frmSucursal"), .clave = {}, .cadenaGuardar = 16103, .cadenaError = 16105}) {}

frmSucursal::~frmSucursal() = default;

void frmSucursal::CrearControles() {
  m_ui = std::make_unique<Ui::frmSucursal>();
  m_ui->setupUi(this);
  for (QLineEdit* box : {m_ui->txtSucursales_0, m_ui->txtSucursales_1, m_ui->txtSucursales_2, m_ui->txtSucursales_3}) {
    SeleccionarAlEnfocar(box);
  }
  const KeyFilter::Options options = KeyFilter::BeepOnRefusal | KeyFilter::ClearWhenFull;
  new KeyFilter(m_ui->txtSucursales_0, EsDigito, longestCode, options);
  new KeyFilter(m_ui->txtSucursales_4, EsLetraODigito, longestPostcode, options);

  On(m_ui->cboPaises, &QComboBox::currentIndexChanged, [this] { cboPaises_Click(); });
  On(m_ui->cmdNPais, &QToolButton::clicked, [this] { cmdNPais_Click(); });
  On(m_ui->cmdNProvincia, &QToolButton::clicked, [this] { cmdNProvincia_Click(); });
  On(SeleccionarAlEnfocar(m_ui->txtSucursales_4), &FocusWatch::Left, [this] {
    if (m_ui->txtSucursales_4->text().trimmed().size() >= 2) {
      ServiciosHost::Nuevo().SeleccionarCP_Provincia(m_ui->txtSucursales_4, m_ui->cboProvincias);
    }
  });
  On(new FocusWatch(m_ui->cboProvincias), &FocusWatch::Left, [this] {
    if (m_ui->cboProvincias->currentIndex() >= 0) {
      ServiciosHost::Nuevo().SeleccionarCP_Provincia(m_ui->cboProvincias, m_ui->txtSucursales_4);
    }
  });
  OnClick(std::array{m_ui->cmdSucursales_0, m_ui->cmdSucursales_1}, [this](int index) { cmdSucursales_Click(index); });
}

QAbstractButton* frmSucursal::BotonAceptar() const {
  return m_ui->cmdSucursales_0;
}

bool frmSucursal::Cargar() {
  m_aceptado = false;
  return m_encargo ? CargarParaBanco() : CargarParaHost();
}

bool frmSucursal::CargarParaBanco() {
  const bool modify = m_encargo->accion == ConstAccion().Modificar();
  if (!m_encargo->sucursal || m_encargo->sucursales == nullptr || (modify && !m_encargo->banco)) {
    Mensaje(16100, vbCritical);
    return false;
  }
  MostrarBanco(m_encargo->banco.value_or(BancoBD::Banco()), modify ? 16102 : 16101);
  if (modify) {
    MostrarSucursal(*m_encargo->sucursal);
  } else {
    PreseleccionarPaisYProvincia();
  }
  return true;
}

bool frmSucursal::CargarParaHost() {
  m_idBanco = objApi().IDAuxNumero();
  if (m_idBanco == 0) {
    Mensaje(16100, vbCritical);
    return false;
  }
  MostrarBanco(BancoBD::LeerBanco(objApi().congestion(), m_idBanco), 16101);
  PreseleccionarPaisYProvincia();
  return true;
}

void frmSucursal::MostrarBanco(const BancoBD::Banco& banco, int cadenaTitulo) {
  m_ui->lblNumeroBanco->setText(banco.Numero);
  m_ui->lblNombreBanco->setText(banco.Nombre);
  SetCaption(LoadResString(cadenaTitulo) + banco.Nombre);
}

void frmSucursal::MostrarSucursal(const cSucursal& sucursal) {
  RellenarPaises(sucursal.IDPais);
  RellenarProvincias(sucursal.IDProvincia);
  m_ui->txtSucursales_0->setText(sucursal.Codigo);
  m_ui->txtSucursales_1->setText(sucursal.Nombre);
  m_ui->txtSucursales_2->setText(sucursal.Direccion);
  m_ui->txtSucursales_3->setText(sucursal.Poblacion);
  m_ui->txtSucursales_4->setText(sucursal.CodigoPostal);
}

qint32 frmSucursal::IDPaisEspana() const {
  try {
    return PrimerIdentificador(
        QStringLiteral("SELECT IDPais FROM Paises WHERE Paises.Eliminado=0 AND Paises.Nombre='España'"), u"IDPAIS");
  } catch (...) {
    InformarErrorPorDefecto(QStringLiteral("IDPaisEspaña"));
    return 0;
  }
}

qint32 frmSucursal::IDProvinciaMadrid(qint32 pais) const {
  try {
    return PrimerIdentificador(QStringLiteral("SELECT Provincias.IDProvincia FROM Provincias INNER JOIN Paises "
                                              "ON Provincias.codPais=Paises.IDPais WHERE Provincias.Eliminado=0 AND "
                                              "Paises.Eliminado=0 AND Provincias.Nombre='Madrid' AND "
                                              "Provincias.codPais=") +
                                   QString::number(pais),
                               u"IDPROVINCIA");
  } catch (...) {
    InformarErrorPorDefecto(QStringLiteral("IDProvinciaMadrid"));
    return 0;
  }
}

void frmSucursal::PreseleccionarPaisYProvincia() {
  const qint32 pais = IDPaisEspana();
  const qint32 provincia = IDProvinciaMadrid(pais);
  RellenarPaises(pais);
  RellenarProvincias(provincia);
}

void frmSucursal::RellenarPaises(qint32 pais) {
  const QSignalBlocker quiet(m_ui->cboPaises);
  Rellenar(m_ui->cboPaises,
           QStringLiteral("SELECT Paises.IDPais, Paises.Nombre FROM Paises WHERE "
                          "Paises.Eliminado=0 ORDER BY Paises.Nombre ASC"),
           QStringLiteral("IDPAIS"), pais);
}

void frmSucursal::RellenarProvincias(qint32 provincia) {
  const qint32 pais = ItemData(m_ui->cboPaises);
  if (pais == 0) {
    m_ui->cboProvincias->clear();
    return;
  }
  Rellenar(m_ui->cboProvincias,
           QStringLiteral("SELECT Provincias.IDProvincia, Provincias.Nombre FROM Provincias WHERE "
                          "Provincias.Eliminado=0 AND Provincias.codPais=") +
               QString::number(pais) + QStringLiteral(" ORDER BY Provincias.Nombre ASC"),
           QStringLiteral("IDPROVINCIA"), provincia);
}

void frmSucursal::Rellenar(QComboBox* combo, const QString& statement, const QString& clave, qint32 id) {
  const auto rs = objApi().congestion().Execute(statement);
  combo->clear();
  for (; !rs->AtEnd(); rs->MoveNext()) {
    combo->addItem(automation::Text(rs->Field(u"NOMBRE")), automation::CLng(rs->Field(clave)));
  }
  combo->setCurrentIndex(combo->findData(id));
}

void frmSucursal::cboPaises_Click() {
  RellenarProvincias(0);
}

void frmSucursal::cmdNPais_Click() {
  const SolicitudAnidada request;
  frmPais().ShowModal();
  if (request.Creado() > 0) {
    RellenarPaises(request.Creado());
    RellenarProvincias(0);
  }
}

void frmSucursal::cmdNProvincia_Click() {
  const qint32 pais = ItemData(m_ui->cboPaises);
  if (pais == 0) {
    MensajeConAviso(16104, vbInformation);
    m_ui->cboPaises->setFocus();
    return;
  }
  const SolicitudAnidada request(pais);
  frmProvincia().ShowModal();
  if (request.Creado() > 0) {
    RellenarProvincias(request.Creado());
  }
}

void frmSucursal::cmdSucursales_Click(int index) {
  if (index != 0) {
    m_encargo ? Unload() : CancelarYCerrar();
    return;
  }
  if (!ConfirmarCampos()) {
    return;
  }
  cSucursal datos;
  Recoger(datos);
  if (datos.Codigo.isEmpty() || datos.Nombre.isEmpty()) {
    MensajeConAviso(16106, vbExclamation);
    (datos.Codigo.isEmpty() ? m_ui->txtSucursales_0 : m_ui->txtSucursales_1)->setFocus();
    return;
  }
  try {
    if (CodigoEnUso(datos.Codigo)) {
      MensajeConAviso(16107, vbCritical);
      m_ui->txtSucursales_0->setFocus();
      return;
    }
    m_encargo ? AceptarParaBanco() : AceptarParaHost(datos);
  } catch (...) {
    MensajeError(Ficha().cadenaError, automation::CurrentError());
    return;
  }
  Unload();
}

bool frmSucursal::CodigoEnUso(const QString& codigo) const {
  if (m_encargo) {
    return std::ranges::any_of(*m_encargo->sucursales, [&](const std::shared_ptr<cSucursal>& other) {
      return other->Estado != ConstAccion().Eliminar() && other->IDSucursal != m_encargo->sucursal->IDSucursal &&
             other->Codigo.trimmed().compare(codigo, Qt::CaseInsensitive) == 0;
    });
  }
  return PrimerIdentificador(QStringLiteral("SELECT Sucursales.IDSucursal FROM Sucursales WHERE "
                                            "Sucursales.Codigo='") +
                                 TextoSql(codigo) + QStringLiteral("' AND Sucursales.codBanco=") +
                                 QString::number(m_idBanco),
                             u"IDSUCURSAL") != 0;
}

cSucursal& frmSucursal::Recoger(cSucursal& sucursal) const {
  sucursal.Codigo = m_ui->txtSucursales_0->text().trimmed();
  sucursal.Nombre = m_ui->txtSucursales_1->text().trimmed();
  sucursal.Direccion = m_ui->txtSucursales_2->text().trimmed();
  sucursal.Poblacion = m_ui->txtSucursales_3->text().trimmed();
  sucursal.CodigoPostal = m_ui->txtSucursales_4->text().trimmed();
  sucursal.IDPais = ItemData(m_ui->cboPaises);
  sucursal.IDProvincia = ItemData(m_ui->cboProvincias);
  sucursal.Pais = m_ui->cboPaises->currentText();
  sucursal.Provincia = m_ui->cboProvincias->currentText();
  return sucursal;
}

void frmSucursal::AceptarParaBanco() {
  cSucursal& sucursal = Recoger(*m_encargo->sucursal);
  if (m_encargo->accion == ConstAccion().Agregar()) {
    sucursal.ExisteEnBD = false;
    sucursal.Estado = ConstAccion().Agregar();
  } else if (sucursal.ExisteEnBD) {
    sucursal.Estado = ConstAccion().Modificar();
  }
  m_aceptado = true;
}

void frmSucursal::AceptarParaHost(const cSucursal& datos) {
  adodb::Connection& connection = objApi().congestion();
  connection.Execute(QStringLiteral("INSERT INTO Sucursales (codBanco, Codigo, Nombre, Direccion, Poblacion, CP, "
                                    "codProvincia, codPais) VALUES( ") +
                     BancoBD::ValoresSucursal(m_idBanco, datos) + QStringLiteral(")"));
  const auto rs = connection.Execute(QStringLiteral("SELECT MAX(IDSucursal) AS MaxID FROM Sucursales"));
  DevolverNuevo(rs->Field(u"MAXID"));
  m_aceptado = true;
}
