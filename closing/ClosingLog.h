#pragma once

#include "core/ArquivoLog.h"

namespace tarvessa {

/// The closing log, "LogFechamento.txt" in the program's folder: a header, then one line per pre-sale and
/// reason.
class ClosingLog {
  public:
    /// Creates the file, or empties it, and writes the header. Raises RuntimeError when it cannot.
    void begin();

    /// Notes why the pre-sale was not closed; `pedido` as the list shows it, the reason with its leading
    /// hyphen
    /// (" - ..."). Raises RuntimeError when the line cannot be written.
    void refuse(const QString& pedido, const QString& reason);

    void close() { m_file.fecha(); }

    /// The full path of the file.
    QString path() const { return m_file.caminho(); }

  private:
    ArquivoLog m_file;
};

} // namespace tarvessa
