#pragma once

#include <QString>

/// The first thing that keeps a form from being saved: where it is, and the box that says so.
template <typename Field> struct FormProblem {
    Field field;
    QString title; // Chinese
    QString text; // Chinese, plain
};
