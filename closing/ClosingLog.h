#pragma once

#include "base/RuntimeError.h"
#include "core/ArquivoLog.h"

#include <optional>

namespace tarvessa {

/// The closing log, "LogFechamento.txt" in the program's folder: a header, then one line per pre-sale and
/// reason.
class ClosingLog {
  public:
    /// Creates the file, or empties it, and writes the header. Raises RuntimeError when it cannot.
    void begin();

    /// Notes why the pre-sale was not closed; `pedido` as the list shows it, the reason with its leading
    /// hyphen (" - ..."). A line that cannot be written raises nothing, so that the log never leaves a
    /// pre-sale half closed; `failure` gives the error.
    void refuse(const QString& pedido, const QString& reason);

    void close() { m_file.fecha(); }

    /// The full path of the file.
    QString path() const { return m_file.caminho(); }

    /// The error of the first line that could not be written since `begin`, its text followed by all such
    /// lines.
    std::optional<RuntimeError> failure() const;

  private:
    ArquivoLog m_file;
    std::optional<RuntimeError> m_firstFailure;
    QStringList m_unwritten;
};

} // namespace tarvessa
