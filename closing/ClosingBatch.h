#pragma once

#include "closing/BatchQuestion.h"
#include "closing/ClosingJournal.h"
#include "closing/ListedPv.h"
#include "closing/PvClosing.h"

namespace tarvessa {

class ClosingLog;
struct ClosingSettings;

/// The lock of the server that a batch holds while it runs, so that two stations never close one pre-sale
/// both: its name, how long to wait for it, and what the operator is told when it is taken.
inline const QString closingLockName = QStringLiteral("fechamento");
inline constexpr int closingLockSeconds = 10;
inline const QString closingLockTaken =
    QStringLiteral("Outra estação está encerrando pré-vendas. Tente novamente em instantes. Verifique!!!");

/// Decides on each listed pre-sale and carries the decision out: cancelled, left alone, refused with its
/// reasons in the log, or closed.
class ClosingBatch {
  public:
    /// The list took the open lines since `listedSince` ("YYYY-MM-DD"); `answer` is that of `askBeforeBatch`.
    /// The others outlive the batch.
    ClosingBatch(const ClosingSettings& settings, QString listedSince, BatchAnswer answer,
                 ClosingHistory& history, ClosingLog& log)
        : m_settings(settings), m_listedSince(std::move(listedSince)), m_answer(std::move(answer)),
          m_history(history), m_log(log) {}

    /// Works on one pre-sale. Raises RuntimeError, which names it; what was executed before stays, and the
    /// log has a line when its closing had begun to write.
    void process(const ListedPv& pv);

    /// True when any pre-sale was cancelled or refused.
    bool hasRefusals() const { return m_hasRefusals; }

    /// True when a pre-sale was refused because a closing had moved its stock before: it may be interrupted.
    bool hasInterrupted() const { return m_hasInterrupted; }

  private:
    void decide(const ListedPv& pv);
    void close(const ListedPv& pv, QDate vencto);
    ClosingReason reasonOfBegun(const ListedPv& pv);
    void cancel(const ListedPv& pv);
    void refuse(const ListedPv& pv, ClosingReason reason);

    const ClosingSettings& m_settings;
    QString m_listedSince;
    BatchAnswer m_answer;
    ClosingHistory& m_history;
    ClosingLog& m_log;
    closingjournal::ClosingNote m_note;
    bool m_hasRefusals = false;
    bool m_hasInterrupted = false;
};

} // namespace tarvessa
