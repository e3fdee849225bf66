#include "interface/Declarations.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QString>

#include <utility>

namespace interface {

namespace {

QString without_comments(QString text)
{
    static const QRegularExpression s_comments(R"(//[^\n]*|/\*.*?\*/|^\s*#[^\n]*)",
        QRegularExpression::DotMatchesEverythingOption | QRegularExpression::MultilineOption);
    static const QRegularExpression s_literals(R"("(?:\\.|[^"\\\n])*")");
    return text.replace(s_literals, "\"\"").remove(s_comments);
}

/// A brace that is open, and the class it belongs to, if any.
struct Scope
{
    QString class_name; // empty for namespaces and bodies
    bool is_namespace = false;
    bool is_template = false;
    bool is_offered = false; // whether what is declared now is public or protected
};

class Reader
{
public:
    Declarations read(const QString& text)
    {
        for (const QChar character : text) {
            if (character == '{') {
                open();
            } else if (character == '}') {
                close();
            } else if (character == ';') {
                end_of_statement();
            } else if (character == ':' && is_label()) {
                m_statement.clear();
            } else {
                m_statement += character;
            }
        }
        return std::move(m_found);
    }

private:
    bool in_class() const { return !m_scopes.empty() && !m_scopes.back().class_name.isEmpty(); }
    bool in_body() const
    {
        return !m_scopes.empty() && m_scopes.back().class_name.isEmpty() && !m_scopes.back().is_namespace;
    }

    bool is_label()
    {
        const QString word
            = m_statement.simplified().section(' ', -1 - int(m_statement.trimmed().endsWith("slots")));
        static const QStringList s_offered{"public", "protected", "public slots", "protected slots"};
        static const QStringList s_hidden{"private", "private slots", "signals"};
        if (!in_class() || !(s_offered.contains(word) || s_hidden.contains(word))) {
            return false;
        }
        m_scopes.back().is_offered = s_offered.contains(word);
        return true;
    }

    void open()
    {
        const QString head = m_statement.simplified();
        m_statement.clear();
        static const QRegularExpression s_class(
            R"(^(?:template <.*> )?(class|struct) (?:(\w+_EXPORT) )?([\w:]+)(?: final)?(?: : .*)?$)");
        Scope scope;
        const QRegularExpressionMatch match = s_class.match(head);
        if (in_body()) {
            m_scopes.push_back(scope);
            return;
        }
        if (match.hasMatch()) {
            scope.class_name
                = (in_class() ? m_scopes.back().class_name + "::" : QString()) + match.captured(3);
            scope.is_offered = match.captured(1) == "struct";
            scope.is_template = head.startsWith("template");
            if (!match.captured(2).isEmpty()) {
                m_found.classes.insert(scope.class_name.toStdString());
            }
        } else if (head.startsWith("namespace") || head.startsWith("extern")) {
            scope.is_namespace = true;
        } else {
            add_operation(head); // its body begins, or the initialisation of a member
        }
        m_scopes.push_back(scope);
    }

    void close()
    {
        if (!m_scopes.empty()) {
            m_scopes.pop_back();
        }
        m_statement.clear();
    }

    void end_of_statement()
    {
        add_operation(m_statement.simplified());
        m_statement.clear();
    }

    void add_operation(QString head)
    {
        static const QRegularExpression s_macros(
            R"(^(Q_OBJECT|Q_GADGET|(Q_DISABLE_COPY|Q_PROPERTY|Q_ENUM)\([^)]*\)) )");
        static const QRegularExpression s_left_out(
            R"(^(typedef|using|friend|enum|static_assert)\b|\boperator\b|~|\boverride\b|= (default|delete)$)");
        head.remove(s_macros);
        const int bracket = head.indexOf('(');
        if (!in_class() || !m_scopes.back().is_offered || bracket < 1 || s_left_out.match(head).hasMatch()) {
            return;
        }
        static const QRegularExpression s_name(R"((\w+)$)");
        const QString name = s_name.match(head.left(bracket).trimmed()).captured(1);
        const QString& class_name = m_scopes.back().class_name;
        const bool is_member = head.left(bracket).contains('=');
        if (!name.isEmpty() && !is_member && name != class_name.section("::", -1)) {
            m_found.operations.push_back(
                {class_name.toStdString(), name.toStdString(), m_scopes.back().is_template});
        }
    }

    std::vector<Scope> m_scopes;
    QString m_statement;
    Declarations m_found;
};

} // namespace

Declarations declarations_in(const std::string& text)
{
    return Reader().read(without_comments(QString::fromStdString(text)));
}

} // namespace interface
