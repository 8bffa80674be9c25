#include <QApplication>
#include <QLocale>

#include <gtest/gtest.h>

/// The tests of the display: one application for the whole program, whatever screen it finds.
int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QLocale::setDefault(QLocale::c());
    return RUN_ALL_TESTS();
}
