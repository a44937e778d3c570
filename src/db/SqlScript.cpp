#include "db/SqlScript.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace SqlScript {

namespace {

// Knows, character by character, whether a script stands in plain text, in quotes or in a comment.
class Lexer final {
public:
    enum class State { Plain, LineComment, SingleQuotes, DoubleQuotes };

    State state() const { return m_state; }

    // Takes the next character. True when the character after it belongs to it: a doubled quote.
    bool advance(QChar c, QChar next)
    {
        switch (m_state) {
        case State::LineComment:
            if (c == u'\n')
                m_state = State::Plain;
            return false;
        case State::SingleQuotes:
            if (c != u'\'')
                return false;
            if (next == u'\'')
                return true;
            m_state = State::Plain;
            return false;
        case State::DoubleQuotes:
            if (c == u'"')
                m_state = State::Plain;
            return false;
        case State::Plain:
            m_state = stateAfterPlain(c, next);
            return false;
        }
        return false;
    }

private:
    static State stateAfterPlain(QChar c, QChar next)
    {
        if (c == u'-' && next == u'-')
            return State::LineComment;
        if (c == u'\'')
            return State::SingleQuotes;
        return c == u'"' ? State::DoubleQuotes : State::Plain;
    }

    State m_state = State::Plain;
};

QChar charAt(const QString& text, qsizetype position)
{
    return position < text.size() ? text.at(position) : QChar();
}

// Collects the characters of one statement and decides at each semicolon whether it is complete.
class StatementCollector final {
public:
    void append(QChar c) { m_buffer += c; }

    void semicolon()
    {
        static const QRegularExpression triggerStart(
            uR"((?is)^\s*CREATE\s+(TEMP|TEMPORARY)?\s*TRIGGER\b)"_s);
        static const QRegularExpression triggerEnd(uR"((?is)\bEND\s*$)"_s);

        const QString probe = stripLineComments(m_buffer).trimmed();
        if (!m_inTrigger && probe.isEmpty()) {
            m_buffer.clear();
            return;
        }
        m_buffer += u';';
        if (m_inTrigger) {
            if (triggerEnd.match(probe).hasMatch())
                emitStatement();
        } else if (triggerStart.match(probe).hasMatch()) {
            m_inTrigger = true;
        } else {
            emitStatement();
        }
    }

    QStringList finish()
    {
        if (!m_buffer.trimmed().isEmpty())
            emitStatement();
        return m_statements;
    }

private:
    void emitStatement()
    {
        m_statements += m_buffer;
        m_buffer.clear();
        m_inTrigger = false;
    }

    QString m_buffer;
    bool m_inTrigger = false;
    QStringList m_statements;
};

} // namespace

QStringList splitStatements(const QString& text)
{
    Lexer lexer;
    StatementCollector collector;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (lexer.state() == Lexer::State::Plain && c == u';') {
            collector.semicolon();
            continue;
        }
        collector.append(c);
        if (lexer.advance(c, charAt(text, i + 1)))
            collector.append(text.at(++i));
    }
    return collector.finish();
}

QString stripLineComments(const QString& text)
{
    Lexer lexer;
    QString kept;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        const bool doubled = lexer.advance(c, charAt(text, i + 1));
        if (lexer.state() != Lexer::State::LineComment)
            kept += c;
        if (doubled)
            kept += text.at(++i);
    }
    return kept;
}

} // namespace SqlScript
