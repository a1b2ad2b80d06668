#pragma once

#include <QHash>
#include <QVector>

#include <initializer_list>

class Reporter;
class SourceTree;

/// Which element of a product file the product parser takes, and where, worked out from the file as
/// written with the parser's own rules: an unknown element is reported and not skipped (its children are
/// read as children of the element around it), the text of a text child is the one token after its start
/// tag, the two roots drop the token after an unknown start tag, and "value_alert", "value_db" and
/// "value_bool2" read nothing inside them. Reports every element the parser does not take (KIV001) and
/// every alert no field takes (KIV112).
class ProductGrammar
{
public:
    ProductGrammar(const SourceTree& tree, Reporter& reporter);

    /// The elements named `name` that the parse function of `context` takes, in file order: the same
    /// objects, in the same order, as the model's list of them.
    QVector<int> accepted(int context, const char* name) const;
    /// The last element taken by `context` under any of `names`, or -1: the one a setter kept.
    int lastAccepted(int context, std::initializer_list<const char*> names) const;

private:
    void walk(int context, int node, bool dropsFirstChild);

    const SourceTree& m_tree;
    Reporter& m_reporter;
    QHash<int, QVector<int>> m_accepted; ///< context element -> the elements its parse function takes
};
