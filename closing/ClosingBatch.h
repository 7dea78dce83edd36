#pragma once

#include "closing/ListedPv.h"
#include "closing/PvClosing.h"

namespace tarvessa {

class ClosingLog;
struct ClosingSettings;

/// Decides on each listed pre-sale and carries it out: cancelled, left alone, refused with its reasons in the
/// log, or closed.
class ClosingBatch {
  public:
    /// All three outlive the batch.
    ClosingBatch(const ClosingSettings& settings, ClosingHistory& history, ClosingLog& log)
        : m_settings(settings), m_history(history), m_log(log) {}

    /// Works on one pre-sale. Raises RuntimeError; what was executed before stays.
    void process(const ListedPv& pv);

    /// True when any pre-sale was cancelled or refused.
    bool hasRefusals() const { return m_hasRefusals; }

  private:
    void cancel(const ListedPv& pv);
    void refuse(const ListedPv& pv, const QString& reason);

    const ClosingSettings& m_settings;
    ClosingHistory& m_history;
    ClosingLog& m_log;
    bool m_hasRefusals = false;
};

} // namespace tarvessa
