#include <globals/Exception.h>
#include <globals/PresetManager.h>

int main()
{
    try {
        TEKLUVA::PresetManager::getInstance()->setPreset("no such key", 1);
    } catch (const TEKLUVA::Exception&) {
        return 0;
    }
    return 1;
}
