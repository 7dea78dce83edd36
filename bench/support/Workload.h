#pragma once

namespace tarvessa::test {
class PrivateServer;
}

namespace tarvessa::bench {

/// Fills the benchmarks' database with a made-up shop: 2,000 customers, all companies with a payment method
/// and a term, nine sellers, 500 products with stock for everything, every tenth of them composed of two.
class Workload {
  public:
    /// Writes customers, payment methods, company and technical sheets. Raises TestError.
    explicit Workload(test::PrivateServer& server);

    /// So many pre-sales of the last seven days and nothing else. With one line each the server's own share
    /// in listing them is as small as it gets. Raises TestError.
    void listing(int documents, int lines = 1) const;

    /// A thousand pre-sales of three lines, so many of them open and listed, the others closed long ago;
    /// stock, receivables, cash book and stock log as before any closing. Raises TestError.
    void closing(int open) const;

    /// So many fiscal lines over the year 2024, four to an invoice, a twentieth of them returns, invoices of
    /// nine sellers to all customers; a thousand exchanges. Raises TestError.
    void fiscalYear(int lines) const;

  private:
    void products() const;

    test::PrivateServer& m_server;
};

} // namespace tarvessa::bench
