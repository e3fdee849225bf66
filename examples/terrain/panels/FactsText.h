#pragma once

#include "panels/DocumentFacts.h"

#include <QtWidgets/QTextEdit>

#include <vector>

namespace terrain {

/// Facts below each other, as a text that can be marked and copied. Long ones are broken anywhere, so that
/// all of a path can be read; the text is as high as it needs to be, if there is room. Main thread.
class FactsText : public QTextEdit
{
    Q_OBJECT

public:
    explicit FactsText(QWidget* p_parent = nullptr);

    /// The same facts as before leave what is marked alone.
    void show_facts(const std::vector<Fact>& facts);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    /// Leaves undo and redo to the window: they are not about this text.
    bool event(QEvent* p_event) override;
    void changeEvent(QEvent* p_event) override;
    void resizeEvent(QResizeEvent* p_event) override;

private:
    void write();
    void fit_height();

    std::vector<Fact> m_facts;
};

} // namespace terrain
