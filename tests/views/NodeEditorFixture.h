#pragma once

#include "views/Input.h"
#include "views/NodeEditor.h"

#include <QTextCursor>
#include <gtest/gtest.h>

#include <string>
#include <vector>

/// An editor between two focusable neighbours; records the texts it reports.
class NodeEditorFixture : public testing::Test
{
protected:
    NodeEditorFixture()
    {
        window.resize(300, 200);
        before.setFocusPolicy(Qt::StrongFocus);
        editor.setGeometry(0, 20, 300, 82);
        after.setFocusPolicy(Qt::StrongFocus);
        editor.onText = [this](const std::string &text) { reports.push_back(text); };
        Input::show(window);
        editor.setFocus();
    }

    void key(Qt::Key which, Qt::KeyboardModifiers modifiers = {})
    {
        Input::key(editor, which, modifiers);
    }

    void type(const std::string &letters) { Input::type(editor, letters); }

    void undo() { key(Qt::Key_Z, Qt::ControlModifier); }

    void redo() { key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier); }

    void select(int from, int to)
    {
        QTextCursor cursor = editor.textCursor();
        cursor.setPosition(from);
        cursor.setPosition(to, QTextCursor::KeepAnchor);
        editor.setTextCursor(cursor);
    }

    std::string shown() const { return editor.toPlainText().toStdString(); }

    std::string lastReport() const { return reports.empty() ? "nothing" : reports.back(); }

    using Texts = std::vector<std::string>;

    QWidget window;
    QWidget before { &window };
    NodeEditor editor { &window };
    QWidget after { &window };
    Texts reports;
};
