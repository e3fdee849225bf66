#pragma once

#include <tarqa/housekeeping/AbstractQuickHelpInputEntry.h>
#include <tarqa/housekeeping/QuickHelpKeySequenceEntry.h>
#include <tarqa/housekeeping/QuickHelpManager.h>

#include <QtCore/QAbstractListModel>
#include <QtCore/QMetaMethod>

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace quickhelp_test {

using tarqa::housekeeping::AbstractQuickHelpEntry;
using tarqa::housekeeping::AbstractQuickHelpInputEntry;
using tarqa::housekeeping::DocumentId;
using tarqa::housekeeping::QuickHelpEntryId;
using tarqa::housekeeping::QuickHelpKeySequenceEntry;
using tarqa::housekeeping::QuickHelpManager;
using tarqa::housekeeping::QuickHelpSection;

typedef std::vector<std::string> Lines;

enum Role
{
    Command = 0,
    Description = 256,
    Visible = 257,
    DocId = 258
};

inline DocumentId doc(unsigned long long number)
{
    return DocumentId::build(number);
}

inline QAbstractListModel& list(QuickHelpSection section)
{
    return *QuickHelpManager::instance().sectionModel(section);
}

/// The texts of a model's column, top to bottom.
inline Lines texts(const QAbstractItemModel& model, int role = Description)
{
    Lines lines;
    for (int row = 0; row < model.rowCount(); ++row) {
        lines.push_back(model.index(row, 0).data(role).toString().toStdString());
    }
    return lines;
}

/// The signatures that a class adds to its base, in the order of its meta-object.
inline Lines methods(const QMetaObject& meta, QMetaMethod::MethodType type)
{
    Lines lines;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        if (method.methodType() == type) {
            lines.push_back(method.typeName() + std::string(" ") + method.methodSignature().toStdString());
        }
    }
    return lines;
}

/// A key binding for tests to which the keys do not matter.
class Binding : public QuickHelpKeySequenceEntry
{
public:
    Binding(unsigned long long document, const char* description,
        QuickHelpSection section = QuickHelpSection::View, QObject* parent = nullptr)
        : QuickHelpKeySequenceEntry(parent, doc(document), QKeySequence(Qt::Key_F5), description, section)
    { }
};

/// What an entry announces, in order.
class EntryLog
{
public:
    explicit EntryLog(AbstractQuickHelpEntry& entry)
    {
        QObject::connect(&entry, &AbstractQuickHelpEntry::attachedChanged, &m_context,
            [this](bool attached) { m_lines.push_back(attached ? "attached" : "detached"); });
        QObject::connect(&entry, &AbstractQuickHelpEntry::entryChanged, &m_context,
            [this](QuickHelpEntryId id) { m_lines.push_back("entry " + std::to_string(id)); });
        QObject::connect(&entry, &AbstractQuickHelpEntry::descriptionChanged, &m_context,
            [this](const QString& text) { m_lines.push_back("description " + text.toStdString()); });
        QObject::connect(&entry, &AbstractQuickHelpEntry::visibleChanged, &m_context,
            [this](bool visible) { m_lines.push_back(visible ? "visible" : "hidden"); });
    }

    Lines take() { return std::exchange(m_lines, {}); }

private:
    QObject m_context;
    Lines m_lines;
};

/// What the manager announces, in order.
class ManagerLog
{
public:
    ManagerLog()
    {
        QuickHelpManager& manager = QuickHelpManager::instance();
        QObject::connect(&manager, &QuickHelpManager::titleChanged, &m_context,
            [this](const DocumentId& document, const QString& text) {
                m_lines.push_back("title " + document.getString() + ' ' + text.toStdString());
            });
        QObject::connect(&manager, &QuickHelpManager::descriptionChanged, &m_context,
            [this](const DocumentId& document, const QString& text) {
                m_lines.push_back("description " + document.getString() + ' ' + text.toStdString());
            });
    }

    Lines take() { return std::exchange(m_lines, {}); }

private:
    QObject m_context;
    Lines m_lines;
};

/// What a model announces, in order.
class ModelLog
{
public:
    explicit ModelLog(QAbstractItemModel& model)
    {
        const auto rows = [this](const char* what) {
            return [this, what](const QModelIndex&, int first, int last) {
                m_lines.push_back(what + (' ' + std::to_string(first) + ' ' + std::to_string(last)));
            };
        };
        QObject::connect(&model, &QAbstractItemModel::rowsAboutToBeInserted, &m_context, rows("inserting"));
        QObject::connect(&model, &QAbstractItemModel::rowsInserted, &m_context, rows("inserted"));
        QObject::connect(&model, &QAbstractItemModel::rowsAboutToBeRemoved, &m_context, rows("removing"));
        QObject::connect(&model, &QAbstractItemModel::rowsRemoved, &m_context, rows("removed"));
        QObject::connect(
            &model, &QAbstractItemModel::modelReset, &m_context, [this] { m_lines.push_back("reset"); });
        QObject::connect(&model, &QAbstractItemModel::dataChanged, &m_context,
            [this](const QModelIndex& from, const QModelIndex& to, const QVector<int>& roles) {
                m_lines.push_back("changed " + std::to_string(from.row()) + ' ' + std::to_string(to.row())
                    + ' ' + std::to_string(roles.size()));
            });
    }

    Lines take() { return std::exchange(m_lines, {}); }

private:
    QObject m_context;
    Lines m_lines;
};

} // namespace quickhelp_test
