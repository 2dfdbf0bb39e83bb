#pragma once

#include <QObject>
#include <QVariant>

#include <memory>

namespace framework {

/// The host's list helper (ProgID "KelApi.cListas"), created with this object and kept as long as it. Item data is the
/// record's identifier (Qt::UserRole); an empty `id` selects nothing. Errors as those of HostServices.
class ListHelper {
 public:
  ListHelper();

  /// Empties `combo` and fills it with the live countries.
  void RellenarComboPais(QObject* combo, const QVariant& id = {}) const;
  void RellenarComboProvincias(QObject* combo, qint32 country, const QVariant& id = {}) const;
  void rellenarcombobancos(QObject* combo, const QVariant& id = {}) const;
  void rellenarcombosucursales(QObject* combo, qint32 bank, const QVariant& id = {}) const;
  /// Empties `combo` and fills it from a statement or a table.
  void RellenarCombo(QObject* combo, const QString& origin, const QString& textColumn, const QString& idColumn) const;
  /// Selects the item whose data equals `id`.
  void LocalizarElementoLista(QObject* combo, const QVariant& id) const;
  /// The number of a bank (`keyColumn` "IDBanco") or the code of a branch ("IDSucursal").
  QString CargarBancoSucursalCaja(const QString& keyColumn, qint32 id) const;
  /// The reverse: selects the bank or branch whose number or code is `code`.
  void CargarBancoSucursalLista(QObject* combo, const QString& keyColumn, const QString& code) const;

 private:
  std::shared_ptr<QObject> m_object;
};

}  // namespace framework
