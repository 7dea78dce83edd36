#pragma once

#include <QFile>

namespace tarvessa {

/// A plain-text log in the program's folder: UTF-8, lines ended by carriage return and line feed, each
/// written through at once so that a later failure loses none.
class ArquivoLog {
  public:
    /// Creates the file empty, or empties it. Raises RuntimeError when it cannot, and when something that is
    /// no ordinary file has its name (a link, a folder, a device): that is then left alone.
    void cria(const QString& nome);

    /// Opens the file to write behind what it holds, or creates it. Raises RuntimeError as `cria` does.
    void continua(const QString& nome);

    /// Writes one line. Raises RuntimeError when it cannot.
    void linha(const QString& texto);

    void fecha() { m_arquivo.close(); }

    /// The full path of the last file that was to be created.
    const QString& caminho() const { return m_caminho; }

  private:
    void abre(const QString& nome, QIODevice::OpenMode modo);

    QFile m_arquivo;
    QString m_caminho;
};

} // namespace tarvessa
