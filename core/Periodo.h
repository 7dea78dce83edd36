#pragma once

#include <QDate>
#include <QString>

namespace tarvessa {

class DateBox;

/// A period as a part of a file name: "2024-02" for a whole month, else "2024-02-05" or "2024-02-05 a
/// 2024-03-01".
QString periodInFileName(const QDate& start, const QDate& end);

/// The period of a report: two date boxes of a screen, their defaults and their checks.
class Periodo {
  public:
    /// What a screen says of a start after the end, of a start that is not a date, and of such an end.
    struct Mensagens {
        QString foraDeOrdem;
        QString inicioInvalido = QStringLiteral("Data inicial inválida. Verifique!!!");
        QString fimInvalido = QStringLiteral("Data final inválida. Verifique!!!");
    };

    /// The boxes are the screen's and outlive this object.
    Periodo(DateBox* dataIni, DateBox* dataFin, Mensagens mensagens);

    /// From the first day of the current month to today.
    void mesCorrente();

    /// The whole month before the current one.
    void mesAnterior();

    /// True when both dates are valid and in order. Otherwise the operator has been told of the first mistake
    /// and the focus is back in its box, the text selected.
    bool confere() const;

    /// True when both boxes hold a date, whatever their order; otherwise as `confere`.
    bool confereDatas() const;

    /// The bounds for SQL, "YYYY-MM-DD"; empty while the box holds no date.
    QString inicioSQL() const;
    QString fimSQL() const;

    /// The bounds as the operator reads them, dd/mm/yyyy; what was typed while that is no date.
    QString inicioTela() const;
    QString fimTela() const;

    /// The period as a part of a file name; a box without a date leaves its place in it empty.
    QString inFileName() const;

  private:
    DateBox* m_dataIni;
    DateBox* m_dataFin;
    Mensagens m_mensagens;
};

} // namespace tarvessa
