#include <pkBaseQt/QFinalPolish.h>

#include "support/App.h"

#include <gtest/gtest.h>

#include <QtCore/QDate>
#include <QtCore/QStringList>
#include <QtGui/QWheelEvent>
#include <QtTest/qtestspontaneevent.h>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateEdit>
#include <QtWidgets/QDial>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QSlider>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QVBoxLayout>

#include <vector>

namespace {

/// A form that counts what its children leave of the wheel.
class Form : public QWidget
{
public:
    int wheels = 0;

protected:
    void wheelEvent(QWheelEvent* p_event) override
    {
        ++wheels;
        p_event->accept();
    }
};

class QFinalPolish : public testing::Test
{
protected:
    QFinalPolish()
    {
        m_layout = new QVBoxLayout(&m_form);
        m_other = add(new QLineEdit);
        m_spin_box = add(new QSpinBox);
        m_spin_box->setValue(50);
        m_decimal = add(new QDoubleSpinBox);
        m_decimal->setValue(50);
        m_date = add(new QDateEdit(QDate(2001, 2, 3)));
        m_slider = add(new QSlider(Qt::Horizontal));
        m_slider->setValue(50);
        m_dial = add(new QDial);
        m_dial->setValue(50);
        for (QComboBox** const pp_combo : {&m_combo, &m_editable}) {
            *pp_combo = add(new QComboBox);
            (*pp_combo)->addItems({"a", "b", "c"});
            (*pp_combo)->setCurrentIndex(1);
        }
        m_editable->setEditable(true);
    }

    template <class Widget>
    Widget* add(Widget* p_widget)
    {
        m_layout->addWidget(p_widget);
        return p_widget;
    }

    std::vector<QWidget*> guarded() const
    {
        return {m_spin_box, m_decimal, m_date, m_slider, m_dial, m_combo, m_editable};
    }

    /// The values of all fields, in a form that can be compared.
    QStringList values() const
    {
        return {m_spin_box->text(), m_decimal->text(), m_date->text(), QString::number(m_slider->value()),
            QString::number(m_dial->value()), m_combo->currentText(), m_editable->currentText()};
    }

    void show()
    {
        m_form.show();
        QApplication::setActiveWindow(&m_form);
        m_other->setFocus();
        ASSERT_EQ(QApplication::focusWidget(), m_other);
    }

    support::App m_app;
    Form m_form;
    QVBoxLayout* m_layout;
    QLineEdit* m_other;
    QSpinBox* m_spin_box;
    QDoubleSpinBox* m_decimal;
    QDateEdit* m_date;
    QSlider* m_slider;
    QDial* m_dial;
    QComboBox* m_combo;
    QComboBox* m_editable;
};

/// One notch of the wheel over a widget, as the window system sends it.
void turn_wheel(QWidget& widget, int notches = 1)
{
    const QPointF place = QPointF(widget.rect().center());
    QWheelEvent wheel(place, widget.mapToGlobal(place.toPoint()), QPoint(), QPoint(0, 120 * notches),
        Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&wheel);
    QCoreApplication::instance()->notify(&widget, &wheel);
}

} // namespace

TEST_F(QFinalPolish, WheelOverFieldsWithoutFocusChangesNothingAndReachesTheForm)
{
    pkBase::QFinalPolish::apply(&m_form);
    show();
    const QStringList before = values();
    int wheels = 0;
    for (QWidget* const p_field : guarded()) {
        turn_wheel(*p_field);
        turn_wheel(*p_field, -1);
        turn_wheel(*p_field);
        EXPECT_EQ(values(), before) << p_field->metaObject()->className();
        wheels += 3;
        EXPECT_EQ(m_form.wheels, wheels) << p_field->metaObject()->className();
        EXPECT_EQ(QApplication::focusWidget(), m_other) << p_field->metaObject()->className();
    }
}

TEST_F(QFinalPolish, WithoutThePolishTheWheelWouldChangeThem)
{
    show();
    for (QWidget* const p_field : guarded()) {
        const QStringList before = values();
        turn_wheel(*p_field, -1);
        EXPECT_NE(values(), before) << p_field->metaObject()->className();
    }
    EXPECT_EQ(m_form.wheels, 0);
}

TEST_F(QFinalPolish, WheelOverTheFieldWithFocusChangesIt)
{
    pkBase::QFinalPolish::apply(&m_form);
    show();
    for (QWidget* const p_field : guarded()) {
        p_field->setFocus();
        const QStringList before = values();
        turn_wheel(*p_field, -1);
        EXPECT_NE(values(), before) << p_field->metaObject()->className();
    }
    EXPECT_EQ(m_form.wheels, 0);
}

TEST_F(QFinalPolish, WheelOverTheLineOfAFieldIsAsOverTheField)
{
    pkBase::QFinalPolish::apply(&m_form);
    show();
    const QStringList before = values();
    for (QWidget* const p_field : {static_cast<QWidget*>(m_spin_box), static_cast<QWidget*>(m_editable)}) {
        auto* const p_line = p_field->findChild<QLineEdit*>();
        ASSERT_NE(p_line, nullptr);
        turn_wheel(*p_line);
    }
    EXPECT_EQ(values(), before);
    EXPECT_EQ(m_form.wheels, 2);
}

TEST_F(QFinalPolish, FieldLosesTheWheelWithTheFocus)
{
    pkBase::QFinalPolish::apply(&m_form);
    show();
    m_spin_box->setFocus();
    m_other->setFocus();
    turn_wheel(*m_spin_box);
    EXPECT_EQ(m_spin_box->value(), 50);
}

TEST_F(QFinalPolish, FieldsTakeTheFocusByTabAndClickStill)
{
    pkBase::QFinalPolish::apply(&m_form);
    for (QWidget* const p_field : guarded()) {
        EXPECT_EQ(p_field->focusPolicy() & Qt::StrongFocus, Qt::StrongFocus)
            << p_field->metaObject()->className();
    }
}

TEST_F(QFinalPolish, FieldThatTakesNoFocusStaysSo)
{
    m_spin_box->setFocusPolicy(Qt::NoFocus);
    m_slider->setFocusPolicy(Qt::TabFocus);
    pkBase::QFinalPolish::apply(&m_form);
    EXPECT_EQ(m_spin_box->focusPolicy(), Qt::NoFocus);
    EXPECT_EQ(m_slider->focusPolicy(), Qt::TabFocus);
}

TEST_F(QFinalPolish, SecondTimeChangesNothing)
{
    pkBase::QFinalPolish::apply(&m_form);
    const auto objects = m_form.findChildren<QObject*>();
    pkBase::QFinalPolish::apply(&m_form);
    pkBase::QFinalPolish::apply(m_spin_box);
    EXPECT_EQ(m_form.findChildren<QObject*>(), objects);
    show();
    turn_wheel(*m_spin_box);
    EXPECT_EQ(m_form.wheels, 1);
    EXPECT_EQ(m_spin_box->value(), 50);
    m_spin_box->setFocus();
    turn_wheel(*m_spin_box);
    EXPECT_EQ(m_spin_box->value(), 51);
}

TEST_F(QFinalPolish, SingleFieldIsPolishedToo)
{
    pkBase::QFinalPolish::apply(m_spin_box);
    show();
    turn_wheel(*m_spin_box);
    EXPECT_EQ(m_spin_box->value(), 50);
    turn_wheel(*m_decimal);
    EXPECT_NE(m_decimal->value(), 50);
}

TEST_F(QFinalPolish, FieldsDeepInsideArePolished)
{
    auto* const p_group = add(new QWidget);
    auto* const p_inner = new QWidget(p_group);
    auto* const p_deep = new QSpinBox(p_inner);
    p_deep->setValue(5);
    pkBase::QFinalPolish::apply(&m_form);
    show();
    turn_wheel(*p_deep);
    EXPECT_EQ(p_deep->value(), 5);
    EXPECT_EQ(m_form.wheels, 1);
}

TEST_F(QFinalPolish, NothingIsIgnored)
{
    pkBase::QFinalPolish::apply(nullptr);
    QWidget empty;
    pkBase::QFinalPolish::apply(&empty);
    EXPECT_TRUE(empty.children().isEmpty());
}

TEST_F(QFinalPolish, ScrollBarsAreUntouched)
{
    auto* const p_area = add(new QScrollArea);
    auto* const p_content = new QWidget;
    p_content->setFixedSize(100, 5000);
    p_area->setWidget(p_content);
    auto* const p_bar = add(new QScrollBar(Qt::Horizontal));
    p_bar->setValue(50);
    const Qt::FocusPolicy policy = p_bar->focusPolicy();
    pkBase::QFinalPolish::apply(&m_form);
    show();
    EXPECT_EQ(p_bar->focusPolicy(), policy);
    turn_wheel(*p_bar);
    EXPECT_NE(p_bar->value(), 50);
    turn_wheel(*p_content, -1);
    EXPECT_GT(p_area->verticalScrollBar()->value(), 0);
    EXPECT_EQ(m_form.wheels, 0);
}

TEST_F(QFinalPolish, FieldInAScrollAreaScrollsTheArea)
{
    auto* const p_area = add(new QScrollArea);
    auto* const p_content = new QWidget;
    p_content->setFixedSize(100, 5000);
    auto* const p_field = new QSpinBox(p_content);
    p_field->setValue(5);
    p_area->setWidget(p_content);
    pkBase::QFinalPolish::apply(&m_form);
    show();
    turn_wheel(*p_field, -1);
    EXPECT_EQ(p_field->value(), 5);
    EXPECT_GT(p_area->verticalScrollBar()->value(), 0);
}

TEST_F(QFinalPolish, OtherEventsOfAFieldPass)
{
    auto* const p_check_box = add(new QCheckBox("A box"));
    pkBase::QFinalPolish::apply(&m_form);
    show();
    QKeyEvent up(QEvent::KeyPress, Qt::Key_Up, Qt::NoModifier);
    QCoreApplication::sendEvent(m_spin_box, &up);
    EXPECT_EQ(m_spin_box->value(), 51);
    p_check_box->click();
    EXPECT_TRUE(p_check_box->isChecked());
}
