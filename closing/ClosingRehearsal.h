#pragma once

#include "closing/ClosingDecision.h"
#include "closing/ClosingSettings.h"
#include "closing/ClosingStatements.h"

#include <QHash>

namespace tarvessa {

struct PvFacts;

/// A product that a pre-sale lacks.
struct RehearsedShortage {
    Shortage shortage;
    QString descricao;
    bool takenBefore = false; ///< earlier pre-sales of the same batch take some of it
};

/// What the batch would do with a listed pre-sale.
struct RehearsedPv {
    enum class Outcome {
        Close,
        Cancel,
        Refuse,
        LeaveAlone,
        Stop,       ///< an error would end the batch here
        NotReached, ///< comes after that
    };

    Outcome outcome = Outcome::NotReached;
    QList<ClosingReason> reasons;       ///< of one that is refused, in the order of the log
    QString document;                   ///< of one that is cancelled, as stored
    ReceivableTerms receivable;         ///< of one that is closed
    QList<RehearsedShortage> shortages; ///< of one that is refused for its stock
    Dinheiro total;                     ///< what its open lines add up to now, where that has changed
    QString error;                      ///< what would end the batch

    /// Letters in the document of one that is cancelled: a company's may have them, and only its digits
    /// count.
    bool hasLetters() const;
};

/// Goes through a list of pre-sales as the batch does, by the same decisions, and writes nothing. What is
/// closed takes its products out of a stock that only the rehearsal sees.
class ClosingRehearsal {
  public:
    /// As for the batch: the list took the open lines since `listedSince` ("YYYY-MM-DD"), and `answer` is
    /// that of `askBeforeBatch`.
    ClosingRehearsal(ClosingSettings settings, QString listedSince, BatchAnswer answer)
        : m_settings(std::move(settings)), m_listedSince(std::move(listedSince)),
          m_answer(std::move(answer)) {}

    /// The next pre-sale of the list. Sends at most one query. Raises RuntimeError when the database does.
    RehearsedPv rehearse(const ListedPv& pv);

  private:
    RehearsedPv decide(const ListedPv& pv);
    StockCheck checkStock(const PvFacts& facts, RehearsedPv& result) const;
    void close(const ListedPv& pv, QDate vencto, const PvFacts& facts, RehearsedPv& result);
    void takeFromStock(const PvFacts& facts);
    Dinheiro taken(const QString& codFabr) const { return m_taken.value(codFabr); }

    ClosingSettings m_settings;
    QString m_listedSince;
    BatchAnswer m_answer;
    QHash<QString, Dinheiro> m_taken; // out of the shop stock, by `produtos`.`CodFabr`
    bool m_stopped = false;
};

} // namespace tarvessa
