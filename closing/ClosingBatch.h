#pragma once

#include "closing/ListedPv.h"
#include "closing/PvClosing.h"

namespace tarvessa {

class ClosingLog;
struct ClosingSettings;

/// Decides on each listed pre-sale and carries the decision out: cancelled, left alone, refused with its
/// reasons in the log, or closed.
class ClosingBatch {
  public:
    /// The list took the open lines since `listedSince` ("YYYY-MM-DD"). The others outlive the batch.
    ClosingBatch(const ClosingSettings& settings, QString listedSince, ClosingHistory& history,
                 ClosingLog& log)
        : m_settings(settings), m_listedSince(std::move(listedSince)), m_history(history), m_log(log) {}

    /// Works on one pre-sale. Raises RuntimeError, which names it, after a line in the log; what was executed
    /// before stays.
    void process(const ListedPv& pv);

    /// True when any pre-sale was cancelled or refused.
    bool hasRefusals() const { return m_hasRefusals; }

  private:
    void decide(const ListedPv& pv);
    void close(const ListedPv& pv, QDate vencto);
    void cancel(const ListedPv& pv);
    void refuse(const ListedPv& pv, const QString& reason);

    const ClosingSettings& m_settings;
    QString m_listedSince;
    ClosingHistory& m_history;
    ClosingLog& m_log;
    bool m_hasRefusals = false;
};

} // namespace tarvessa
