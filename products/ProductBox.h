#pragma once

#include <QObject>
#include <QString>

#include <functional>

class QWidget;

namespace tarvessa {

class TextBox;

/// A box in which the operator enters a product. Leaving it searches for what was typed, cut at 200
/// characters with a message; the box then shows the product's description and its property "tag" holds the
/// product's code, empty when there is no product.
class ProductBox : public QObject {
    Q_OBJECT

  public:
    /// What is done with a text that gives no product.
    enum class Unknown { KeepText, ClearText };

    /// How a screen looks its product up once a code is chosen.
    struct LookUp {
        /// The columns read from `produtos`, as its statement spells them: Descricao and, where the tag is to
        /// hold the code as it is stored there, CodFabr.
        QString columns;

        /// What the operator is told when there is no such product.
        QString unknownMessage;
        Unknown unknown;

        /// Called with the code once the box shows a product; may be empty.
        std::function<void(const QString& code)> found;
    };

    /// Serves `box`, a text box of the form `form`.
    ProductBox(TextBox* box, QWidget* form, LookUp lookUp);

    /// The product's code (`produtos`.`codfabr`); empty without a valid product.
    QString code() const;

    /// Empties tag and text.
    void clear();

    /// True between leaving the box and the search that this asks for.
    bool isPending() const { return m_pending; }

    /// Runs the search that leaving the box asked for and that has not run yet. False when it gave no product
    /// and the operator has been told. Reads `produtos`; raises RuntimeError.
    bool settle();

  private:
    bool search();
    QString cut(const QString& text);
    void show(const QString& code, const QString& description);

    TextBox* m_box;
    QWidget* m_form;
    LookUp m_lookUp;
    bool m_pending = false;
    bool m_searching = false;
};

} // namespace tarvessa
