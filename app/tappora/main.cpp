#include "app/common/system/environment.h"
#include "app/tappora/dispatch.h"

int main(int argc, char** argv) {
    return tappora::dispatch({argv + 1, argv + argc}, tappora::hostEnvironment());
}
