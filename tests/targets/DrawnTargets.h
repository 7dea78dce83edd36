#pragma once

#include <QStringList>

#include <map>
#include <utility>

namespace tarvessa::test {

class PrivateServer;

/// A drawn lot of targets, invoices and returns, and what of them counts from 01/03/2024 to 15/03/2024, added
/// up here and not by the database. Quantities are in thousandths, money in hundredths.
class DrawnTargets {
  public:
    struct Conta {
        qint64 meta = 0;
        qint64 vendido = 0;
        qint64 total = 0;
        qint64 devolvido = 0;
        Conta& operator+=(const Conta& b);
    };

    static constexpr int vendedores = 7;
    static constexpr int produtos = 40;

    /// Draws the rows and writes them. Raises TestError.
    explicit DrawnTargets(PrivateServer& servidor);

    static QString codigo(int produto);
    static QString descricao(int produto);

    /// By seller (from 1) and product (from 0).
    const std::map<std::pair<int, int>, Conta>& contas() const { return m_contas; }

    /// The cells of the board's line for these figures.
    static QStringList celulas(const QString& codigo, const QString& descricao, const Conta& conta);

  private:
    void sorteiaMetas(PrivateServer& servidor);
    void sorteiaVendas(PrivateServer& servidor);
    void sorteiaDevolucoes(PrivateServer& servidor);

    std::map<std::pair<int, int>, Conta> m_contas;
};

} // namespace tarvessa::test
