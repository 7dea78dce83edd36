#pragma once

namespace tarvessa::test {
class PrivateServer;
}

namespace tarvessa::bench {

/// Fills the benchmarks' database with a made-up shop: 2,000 customers, all companies with a payment method
/// and a term, nine sellers, 500 products with stock for everything, every tenth of them composed of two.
class Workload {
  public:
    static constexpr int usualCustomers = 2000;

    /// Writes customers, payment methods, company and technical sheets. Raises TestError.
    explicit Workload(test::PrivateServer& server);

    /// So many customers instead of those there are. Raises TestError.
    void customers(int count) const;

    /// So many pre-sales of the last seven days and nothing else. With one line each the server's own share
    /// in listing them is as small as it gets. Raises TestError.
    void listing(int documents, int lines = 1) const;

    /// Pre-sales of three lines, so many of them open and listed, the others closed long ago; stock,
    /// receivables, cash book and stock log as before any closing. Raises TestError.
    void closing(int open, int documents = 1000) const;

    /// So many open documents of 20 lines, of the kind 'D' or 'P', each with a note; two lines of each are
    /// off the price table at which the customer buys. Raises TestError.
    void trade(int documents, char kind) const;

    /// So many fiscal lines over the year 2024, four to an invoice, a twentieth of them returns, invoices of
    /// nine sellers to so many customers in turn; a thousand exchanges. Raises TestError.
    void fiscalYear(int lines, int customers = 2000) const;

    /// A target for each of 500 products and each of ten sellers, the last of whom has no invoices. Raises
    /// TestError.
    void targets() const;

    /// The 500 products with their stock, and no others. Raises TestError.
    void products() const;

  private:
    test::PrivateServer& m_server;
};

} // namespace tarvessa::bench
