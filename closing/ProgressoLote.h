#pragma once

#include "ui/BusyPointer.h"

#include <QElapsedTimer>
#include <QProgressBar>

namespace tarvessa {

/// Tells in the status line which row of how many a batch is working on. It paints itself without letting any
/// other input in, and shows only for batches of more than a handful.
class ProgressoLote : public QProgressBar {
    Q_OBJECT

  public:
    explicit ProgressoLote(QWidget* parent);

    /// Begins a batch of so many rows, each a document of the kind named in Portuguese, and shows the busy
    /// pointer; both end when the returned object goes, however the batch ends.
    class Lote {
      public:
        Lote(ProgressoLote* progresso, int linhas, const QString& documento);
        ~Lote();
        Lote(const Lote&) = delete;
        Lote& operator=(const Lote&) = delete;

        /// Row from 1.
        void linha(int numero);

      private:
        ProgressoLote* m_progresso;
        BusyPointer m_ponteiro;
        QElapsedTimer m_desdeAPintura;
    };
};

} // namespace tarvessa
