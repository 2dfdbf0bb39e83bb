#include "database/seed/Invented.h"
#include "database/seed/Seed.h"
#include "database/seed/SeedTable.h"

namespace database {

namespace {

constexpr int collaborators = 300;
constexpr int homeCountry = 35;
constexpr int headings = 11;

constexpr const char16_t* womensNames[] = {u"Adela", u"Begoña", u"Carmen", u"Dolores", u"Elvira", u"Fátima",
                                           u"Gema",  u"Inés",   u"Lucía",  u"Marta",   u"Nieves", u"Olga",
                                           u"Pilar", u"Rocío",  u"Sofía",  u"Teresa",  u"Úrsula", u"Violeta"};
constexpr const char16_t* mensNames[] = {u"Álvaro",  u"Benito", u"César", u"Damián",  u"Eloy",    u"Fermín",
                                         u"Gonzalo", u"Hugo",   u"Íñigo", u"Joaquín", u"Lorenzo", u"Martín",
                                         u"Nicolás", u"Óscar",  u"Pablo", u"Ramón",   u"Saúl",    u"Tomás"};
constexpr const char16_t* surnames[] = {
    u"Abadía",   u"Bermúdez", u"Cañadas",  u"D'Ors", u"Escudero", u"Fariñas",  u"Garzón",  u"Herrán",  u"Ibáñez",
    u"Jáuregui", u"Lozano",   u"Muñiz",    u"Núñez", u"Ordóñez",  u"Peñalver", u"Quiroga", u"Rebollo", u"Sotomayor",
    u"Tejada",   u"Urrutia",  u"Valverde", u"Yagüe", u"Zamorano", u"Ñíguez",   u"Olmedo",  u"Pedraza", u"Carrascal"};
constexpr const char16_t* streets[] = {u"Calle Mayor",          u"Calle del Olivar",   u"Plaza de la Fuente",
                                       u"Avenida de la Sierra", u"Calle de Santa Ana", u"Paseo de la Ribera",
                                       u"Ronda del Mirador",    u"Travesía del Horno", u"Camino Viejo",
                                       u"Calle de los Álamos",  u"Cuesta de San Blas", u"Calle de l'Hort"};

struct Town {
  const char16_t* name;
  const char16_t* postcode;
  int province;
};

constexpr Town towns[] = {{u"Madrid", u"28", 28},   {u"Alcalá de Henares", u"28", 28},
                          {u"Barcelona", u"08", 8}, {u"L'Hospitalet de Llobregat", u"08", 8},
                          {u"Valencia", u"46", 46}, {u"Sagunto", u"46", 46},
                          {u"Sevilla", u"41", 41},  {u"Zaragoza", u"50", 50},
                          {u"Málaga", u"29", 29},   {u"Soria", u"42", 42},
                          {u"Segovia", u"40", 40},  {u"Santander", u"39", 39},
                          {u"Gijón", u"33", 33},    {u"A Coruña", u"15", 15},
                          {u"Granada", u"18", 18},  {u"Ávila", u"05", 5},
                          {u"Bilbao", u"48", 48},   {u"Logroño", u"26", 26}};

// An INSERT of texts; the columns' types say what becomes of them.
void Insert(adodb::Connection& connection, const QString& start, const QStringList& values) {
  QStringList quoted;
  for (const QString& value : values) {
    quoted += Quoted(value);
  }
  connection.Execute(start + QStringLiteral(" VALUES (") + quoted.join(u',') + u')');
}

QString Amount(Invented& invented) {
  const int euros = 5 + 5 * invented.Number(60);
  return QStringLiteral("%1,%2").arg(euros).arg(invented.Chance(15) ? QStringLiteral("50") : QStringLiteral("00"));
}

// The diocese of a province, the one of the same name where there are several; 0 for none.
int DioceseOf(adodb::Connection& connection, int province) {
  const auto found = connection.Execute(
      QStringLiteral("SELECT TOP 1 IDDiocesis FROM Diocesis INNER JOIN Provincias ON CodProvincia=IDProvincia WHERE "
                     "IDProvincia=%1 ORDER BY IIF(Diocesis.Nombre=Provincias.Nombre, 0, 1), IDDiocesis")
          .arg(province));
  return found->AtEnd() ? 0 : found->Field(u"IDDiocesis").toInt();
}

int AbroadCountry(adodb::Connection& connection, Invented& invented) {
  constexpr const char16_t* countries[] = {u"Francia", u"Portugal", u"Italia", u"Alemania", u"Argentina", u"México"};
  const auto found =
      connection.Execute(QStringLiteral("SELECT IDPais FROM Paises WHERE Nombre=") + Quoted(invented.From(countries)));
  return found->Field(u"IDPais").toInt();
}

QStringList Address(adodb::Connection& connection, Invented& invented) {
  QString street = invented.From(streets);
  street += QStringLiteral(", ") + QString::number(1 + invented.Number(90));
  if (invented.Chance(6)) {
    const int country = AbroadCountry(connection, invented);
    return {street,
            QStringLiteral("Villanueva"),
            QString(),
            QStringLiteral("0"),
            QString::number(country),
            QStringLiteral("0")};
  }
  const Town& town = towns[static_cast<std::size_t>(invented.Number(std::size(towns)))];
  const QString postcode = QString::fromUtf16(town.postcode) + QStringLiteral("0") + invented.Digits(2);
  return {street,
          QString::fromUtf16(town.name),
          postcode,
          QString::number(town.province),
          QString::number(homeCountry),
          QString::number(DioceseOf(connection, town.province))};
}

void InsertCollaborators(adodb::Connection& connection, Invented& invented) {
  const QString start = QStringLiteral(
      "INSERT INTO Colaboradores (Direccion, Poblacion, CP, CodProvincia, codpais, CodDiocesis, Tratamiento, Nombre, "
      "Apellido1, Apellido2, NIF, CodCobrador, CodEncabezado, FechaAlta)");
  for (int i = 0; i < collaborators; ++i) {
    const bool isWoman = invented.Chance(55);
    QStringList values = Address(connection, invented);
    values += isWoman ? QStringLiteral("D.ª") : QStringLiteral("D.");
    values += isWoman ? invented.From(womensNames) : invented.From(mensNames);
    values += invented.From(surnames);
    values += invented.From(surnames);
    values += invented.Nif();
    values += QString::number(invented.Chance(20) ? 1 + invented.Number(3) : 0);
    values += QString::number(invented.Chance(80) ? 1 : 1 + invented.Number(headings));
    values += invented.Date();
    Insert(connection, start, values);
  }
}

void InsertAccounts(adodb::Connection& connection, Invented& invented) {
  const QString start = QStringLiteral("INSERT INTO Colaboradores_Cuentas (CodColaborador, codSucursal, NumeroCuenta)");
  for (int i = 1; i <= collaborators; ++i) {
    if (invented.Chance(60)) {
      const int branch = 1 + invented.Number(12);
      Insert(connection, start,
             {QString::number(i), QString::number(branch), QStringLiteral("9100") + invented.Digits(16)});
    }
  }
}

void InsertDonations(adodb::Connection& connection, Invented& invented) {
  const QString start = QStringLiteral(
      "INSERT INTO Donativos (CodColaborador, CodTipoDonativo, CodDeduccion_Comunidad, CodEmisor_Cuenta, Importe, "
      "Fecha, TextoRecibo)");
  for (int i = 0; i < 3 * collaborators; ++i) {
    const int collaborator = 1 + invented.Number(collaborators);
    const int kind = 1 + invented.Number(5);
    const int regional = invented.Chance(10) ? 1 + invented.Number(3) : 0;
    const QString amount = Amount(invented);
    Insert(connection, start,
           {QString::number(collaborator), QString::number(kind), QString::number(regional), QStringLiteral("1"),
            amount, invented.Date(), QStringLiteral("Donativo a la Fundación Puente de Luz")});
  }
}

void InsertSubscriptions(adodb::Connection& connection, Invented& invented) {
  const QString start = QStringLiteral(
      "INSERT INTO Suscripciones (CodColaborador, CodTipoPublicacion, CodTipoSuscripcion, CodEmisor_Cuenta, "
      "NumeroEjemplares, TextoRecibo, FechaAlta)");
  for (int i = 1; i <= collaborators; ++i) {
    if (!invented.Chance(45)) {
      continue;
    }
    const int publication = 1 + invented.Number(3);
    const int kind = 1 + invented.Number(5);
    const int copies = invented.Chance(85) ? 1 : 2 + invented.Number(9);
    Insert(connection, start,
           {QString::number(i), QString::number(publication), QString::number(kind), QStringLiteral("2"),
            QString::number(copies), QStringLiteral("Suscripción"), invented.Date()});
  }
  for (int publication = 1; publication <= 3; ++publication) {
    for (const QString& price : {QStringLiteral("ImporteNacional"), QStringLiteral("ImporteExtranjero")}) {
      connection.Execute(
          QStringLiteral(
              "UPDATE Suscripciones SET Importe = NumeroEjemplares * (SELECT %1 FROM TipoPublicaciones WHERE "
              "IDTipoPublicacion=%2) WHERE CodTipoPublicacion=%2 AND CodColaborador IN (SELECT IDColaborador "
              "FROM Colaboradores WHERE codpais%3%4)")
              .arg(price)
              .arg(publication)
              .arg(price == u"ImporteNacional" ? QStringLiteral("=") : QStringLiteral("<>"))
              .arg(homeCountry));
    }
  }
}

void InsertFiles(adodb::Connection& connection) {
  const std::pair<QString, QString> files[] = {
      {QStringLiteral("Bancos"), QStringLiteral("demo_bancos.tsv")},
      {QStringLiteral("Sucursales"), QStringLiteral("demo_sucursales.tsv")},
      {QStringLiteral("Presentadores"), QStringLiteral("demo_presentadores.tsv")},
      {QStringLiteral("Emisores"), QStringLiteral("demo_emisores.tsv")},
      {QStringLiteral("Cuentas"), QStringLiteral("demo_cuentas.tsv")},
      {QStringLiteral("Emisores_Cuentas"), QStringLiteral("demo_emisores_cuentas.tsv")},
      {QStringLiteral("Cobradores"), QStringLiteral("demo_cobradores.tsv")},
      {QStringLiteral("TipoDonativos"), QStringLiteral("demo_tipos_donativos.tsv")},
      {QStringLiteral("Deduccion_Comunidad"), QStringLiteral("demo_deducciones_comunidad.tsv")},
      {QStringLiteral("TipoPublicaciones"), QStringLiteral("demo_publicaciones.tsv")},
      {QStringLiteral("Cabeceras"), QStringLiteral("demo_cabeceras.tsv")},
      {QStringLiteral("ETIQUETAS"), QStringLiteral("demo_etiquetas.tsv")},
      {QStringLiteral("EtiquetasCampos"), QStringLiteral("demo_etiquetas_campos.tsv")},
      {QStringLiteral("CartasModelo"), QStringLiteral("demo_cartas.tsv")},
  };
  for (const auto& [table, file] : files) {
    InsertSeedFile(connection, table, file);
  }
}

}  // namespace

void SeedDemonstration(adodb::Connection& connection) {
  Invented invented;
  connection.Execute(QStringLiteral("UPDATE configuracion SET NombreEntidad='Fundación Puente de Luz'"));
  connection.Execute(
      QStringLiteral("INSERT INTO Usuarios (Nombre, NombreCompleto, Administrador, TipoUsuario) VALUES "
                     "('secretaria', 'Secretaría', False, 2)"));
  InsertFiles(connection);
  InsertCollaborators(connection, invented);
  InsertAccounts(connection, invented);
  InsertDonations(connection, invented);
  InsertSubscriptions(connection, invented);
}

}  // namespace database
