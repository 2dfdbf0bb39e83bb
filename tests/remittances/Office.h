#pragma once

#include "support/Expect.h"

#include <QString>

/// Rows that the dialogs of remittance parties start from.
struct Office {
  explicit Office(const support::TestHost& testHost) : host(testHost) {}

  int Bank(const QString& number, const QString& name) const {
    host.Query(u"INSERT INTO Bancos(Numero,Nombre) VALUES('{}','{}')", number, name);
    return host.Id(u"SELECT MAX(IDBanco) FROM Bancos");
  }
  int Branch(int bank, const QString& code, const QString& name) const {
    host.Query(u"INSERT INTO Sucursales(codBanco,Codigo,Nombre) VALUES({},'{}','{}')", bank, code, name);
    return host.Id(u"SELECT MAX(IDSucursal) FROM Sucursales");
  }
  int Presenter(const QString& name, const QString& suffix, int bank, int branch) const {
    host.Query(u"INSERT INTO Presentadores(Nombre,Nif,Sufijo,CodBanco,CodSucursal) VALUES('{}','A11111119','{}',{},{})",
               name, suffix, bank, branch);
    return host.Id(u"SELECT MAX(IDPresentador) FROM Presentadores");
  }

  const support::TestHost& host;
};

/// The number of a property of the request, as it stands now.
inline int Requested(support::TestHost& host, const char* property) {
  return host.services().property(property).toInt();
}
