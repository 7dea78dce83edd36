#pragma once

#include "ui/BusyPointer.h"

#include <QElapsedTimer>
#include <QProgressBar>

namespace tarvessa {

/// Shows in the status line which row of how many a batch is working on, and the remaining time once it can
/// be estimated. It repaints itself without processing other events, and stays hidden for batches of only a
/// few rows.
class BatchProgress : public QProgressBar {
    Q_OBJECT

  public:
    explicit BatchProgress(QWidget* parent);

    /// "2 min" or "35 s": how long the rest of a batch of `rows` takes when `done` of them took that long.
    /// Empty while too little is done for an estimate.
    static QString timeLeft(qint64 elapsedMs, int done, int rows);

    /// One batch, from construction to destruction: shows the progress and the busy pointer.
    class Run {
      public:
        /// `rows` documents of a kind whose name the operator reads.
        Run(BatchProgress* progress, int rows, const QString& kind);
        ~Run();
        Run(const Run&) = delete;
        Run& operator=(const Run&) = delete;

        /// The batch begins this row, counted from 1.
        void enter(int row);

      private:
        BatchProgress* m_progress;
        QString m_text;
        int m_rows;
        BusyPointer m_pointer;
        QElapsedTimer m_sinceBegin;
        QElapsedTimer m_sincePaint;
    };
};

} // namespace tarvessa
