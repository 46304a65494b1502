#include <globals/widgets/UnitBox.h>

#include <QApplication>

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    TEKLUVA::UnitBox box;
    box.setUnit(TEKLUVA::E_MU_FOOT);
    return box.getUnit() == TEKLUVA::E_MU_FOOT ? 0 : 1;
}
