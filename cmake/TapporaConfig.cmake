# find_package(Tappora) gives Tappora::TapCore (counts, files, keyboards, practice, the assistant's tools) and
# Tappora::TapWidgets (the desktop widgets), with what they need.
include(CMakeFindDependencyMacro)
find_dependency(ICU COMPONENTS uc i18n)
find_dependency(nlohmann_json 3.11)
find_dependency(pugixml)
include(${CMAKE_CURRENT_LIST_DIR}/TapporaTargets.cmake)
