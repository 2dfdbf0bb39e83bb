#include "database/seed/Invented.h"
#include "database/seed/Seed.h"
#include "database/seed/SeedTable.h"
#include "platform/adodb/Statement.h"

using namespace Qt::StringLiterals;

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

// A heading and the title that goes with it; none where it is the usual one.
struct Heading {
  int id;
  const char16_t* title;
};

constexpr Heading usualHeading = {1, u""};
constexpr Heading womensHeadings[] = {{2, u""}, {3, u""}, {5, u"Sor"}};
constexpr Heading mensHeadings[] = {{2, u""}, {3, u""}, {4, u"Rvdo. P."}, {6, u"Fray"}};

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

QString Amount(Invented& invented) {
  const int euros = 5 + 5 * invented.Number(60);
  return QString::number(euros) + (invented.Chance(15) ? u",50"_s : u",00"_s);
}

const Heading& HeadingOf(int number, bool isWoman) {
  const std::span<const Heading> fitting = isWoman ? std::span<const Heading>(womensHeadings) : mensHeadings;
  return fitting[static_cast<std::size_t>(number) % fitting.size()];
}

QString TitleOf(const Heading& heading, bool isWoman) {
  const QString title = QString::fromUtf16(heading.title);
  return title.isEmpty() ? (isWoman ? u"D.ª"_s : u"D."_s) : title;
}

// The diocese of a province, the one of the same name where there are several; 0 for none.
int DioceseOf(adodb::Connection& connection, int province) {
  const auto found = adodb::Execute(
      connection,
      u"SELECT TOP 1 IDDiocesis FROM Diocesis INNER JOIN Provincias ON CodProvincia=IDProvincia WHERE IDProvincia={} "
      u"ORDER BY IIF(Diocesis.Nombre=Provincias.Nombre, 0, 1), IDDiocesis",
      province);
  return found->AtEnd() ? 0 : found->Field(u"IDDiocesis").toInt();
}

int AbroadCountry(adodb::Connection& connection, Invented& invented) {
  constexpr const char16_t* countries[] = {u"Francia", u"Portugal", u"Italia", u"Alemania", u"Argentina", u"México"};
  const auto found =
      adodb::Execute(connection, u"SELECT IDPais FROM Paises WHERE Nombre='{}'", invented.From(countries));
  return found->Field(u"IDPais").toInt();
}

struct Address {
  QString street;
  QString town;
  QString postcode;
  int province = 0;
  int country = homeCountry;
  int diocese = 0;
};

Address InventAddress(adodb::Connection& connection, Invented& invented) {
  Address address;
  address.street = invented.From(streets);
  address.street += u", "_s + QString::number(1 + invented.Number(90));
  if (invented.Chance(6)) {
    address.country = AbroadCountry(connection, invented);
    address.town = u"Villanueva"_s;
    return address;
  }
  const Town& town = towns[static_cast<std::size_t>(invented.Number(std::size(towns)))];
  address.town = QString::fromUtf16(town.name);
  address.postcode = QString::fromUtf16(town.postcode) + u'0' + invented.Digits(2);
  address.province = town.province;
  address.diocese = DioceseOf(connection, town.province);
  return address;
}

// Every invention is taken in a line of its own: the order of arguments would depend on the compiler.
void InsertCollaborators(adodb::Connection& connection, Invented& invented) {
  for (int i = 0; i < collaborators; ++i) {
    const bool isWoman = invented.Chance(55);
    const Address address = InventAddress(connection, invented);
    const QString name = isWoman ? invented.From(womensNames) : invented.From(mensNames);
    const QString surname = invented.From(surnames);
    const QString secondSurname = invented.From(surnames);
    const QString nif = invented.Nif();
    const int collector = invented.Chance(20) ? 1 + invented.Number(3) : 0;
    const Heading& heading = invented.Chance(80) ? usualHeading : HeadingOf(invented.Number(headings), isWoman);
    const QString since = invented.Date();
    adodb::Execute(connection,
                   u"INSERT INTO Colaboradores (Direccion, Poblacion, CP, CodProvincia, codpais, CodDiocesis, "
                   u"Tratamiento, Nombre, Apellido1, Apellido2, NIF, CodCobrador, CodEncabezado, FechaAlta) VALUES "
                   u"('{}','{}','{}',{},{},{},'{}','{}','{}','{}','{}',{},{},'{}')",
                   address.street, address.town, address.postcode, address.province, address.country, address.diocese,
                   TitleOf(heading, isWoman), name, surname, secondSurname, nif, collector, heading.id, since);
  }
  InsertSeedFile(connection, u"demonstration"_s, u"Colaboradores"_s);
}

void InsertAccounts(adodb::Connection& connection, Invented& invented) {
  for (int i = 1; i <= collaborators; ++i) {
    if (invented.Chance(60)) {
      const int branch = 1 + invented.Number(12);
      adodb::Execute(connection,
                     u"INSERT INTO Colaboradores_Cuentas (CodColaborador, codSucursal, NumeroCuenta) VALUES "
                     u"({},{},'9100{}')",
                     i, branch, invented.Digits(16));
    }
  }
}

void InsertDonations(adodb::Connection& connection, Invented& invented) {
  for (int i = 0; i < 3 * collaborators; ++i) {
    const int collaborator = 1 + invented.Number(collaborators);
    const int kind = 1 + invented.Number(5);
    const int regional = invented.Chance(10) ? 1 + invented.Number(3) : 0;
    const QString amount = Amount(invented);
    const QString date = invented.Date();
    adodb::Execute(connection,
                   u"INSERT INTO Donativos (CodColaborador, CodTipoDonativo, CodDeduccion_Comunidad, "
                   u"CodEmisor_Cuenta, Importe, Fecha, TextoRecibo) VALUES "
                   u"({},{},{},1,'{}','{}','Donativo a la Fundación Puente de Luz')",
                   collaborator, kind, regional, amount, date);
  }
}

void InsertSubscriptions(adodb::Connection& connection, Invented& invented) {
  for (int i = 1; i <= collaborators; ++i) {
    if (!invented.Chance(45)) {
      continue;
    }
    const int publication = 1 + invented.Number(3);
    const int kind = 1 + invented.Number(5);
    const int copies = invented.Chance(85) ? 1 : 2 + invented.Number(9);
    adodb::Execute(connection,
                   u"INSERT INTO Suscripciones (CodColaborador, CodTipoPublicacion, CodTipoSuscripcion, "
                   u"CodEmisor_Cuenta, NumeroEjemplares, TextoRecibo, FechaAlta) VALUES "
                   u"({},{},{},2,{},'Suscripción','{}')",
                   i, publication, kind, copies, invented.Date());
  }
  InsertSeedFile(connection, u"demonstration"_s, u"Suscripciones"_s);
  for (int publication = 1; publication <= 3; ++publication) {
    adodb::Execute(connection,
                   u"UPDATE Suscripciones SET Importe = NumeroEjemplares * (SELECT ImporteNacional FROM "
                   u"TipoPublicaciones WHERE IDTipoPublicacion={0}) WHERE CodTipoPublicacion={0} AND CodColaborador IN "
                   u"(SELECT IDColaborador FROM Colaboradores WHERE codpais={1})",
                   publication, homeCountry);
    adodb::Execute(connection,
                   u"UPDATE Suscripciones SET Importe = NumeroEjemplares * (SELECT ImporteExtranjero FROM "
                   u"TipoPublicaciones WHERE IDTipoPublicacion={0}) WHERE CodTipoPublicacion={0} AND CodColaborador IN "
                   u"(SELECT IDColaborador FROM Colaboradores WHERE codpais<>{1})",
                   publication, homeCountry);
  }
}

void InsertFiles(adodb::Connection& connection) {
  for (const QString& table :
       {u"Bancos"_s, u"Sucursales"_s, u"Presentadores"_s, u"Emisores"_s, u"Cuentas"_s, u"Emisores_Cuentas"_s,
        u"Cobradores"_s, u"TipoDonativos"_s, u"Deduccion_Comunidad"_s, u"TipoPublicaciones"_s, u"Cabeceras"_s,
        u"ETIQUETAS"_s, u"EtiquetasCampos"_s, u"CartasModelo"_s, u"Discos"_s, u"Selecciones"_s}) {
    InsertSeedFile(connection, u"demonstration"_s, table);
  }
}

}  // namespace

void SeedDemonstration(adodb::Connection& connection) {
  Invented invented;
  adodb::Execute(connection, u"UPDATE configuracion SET NombreEntidad='Fundación Puente de Luz'");
  adodb::Execute(connection,
                 u"INSERT INTO Usuarios (Nombre, NombreCompleto, Administrador, TipoUsuario) VALUES "
                 u"('secretaria', 'Secretaría', False, 2)");
  InsertFiles(connection);
  InsertCollaborators(connection, invented);
  InsertAccounts(connection, invented);
  InsertDonations(connection, invented);
  InsertSubscriptions(connection, invented);
}

}  // namespace database
