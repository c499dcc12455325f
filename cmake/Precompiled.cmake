# Headers that most files read anyway are compiled once per build and reused by every target: the compiler spends four
# fifths of its time in them. CMAKE_DISABLE_PRECOMPILE_HEADERS turns this off (preset tidy does: there each file must
# include what it uses).

# precompiled_headers(name LINK … HEADERS …): an object library that only carries the compiled headers.
function(precompiled_headers name)
  cmake_parse_arguments(arg "" "" "LINK;HEADERS" ${ARGN})
  file(CONFIGURE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp CONTENT "")
  qt_add_library(${name} OBJECT ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
  set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTORCC OFF)
  target_link_libraries(${name} PRIVATE ${arg_LINK} tessaly_options)
  target_precompile_headers(${name} PRIVATE ${arg_HEADERS})
endfunction()

set(core_headers
  <algorithm> <array> <chrono> <cmath> <functional> <memory> <optional> <ranges> <string_view> <utility> <vector>
  <QByteArray> <QDateTime> <QDir> <QFile> <QHash> <QList> <QLocale> <QObject> <QPointer> <QSet> <QString> <QStringList>
  <QTimer> <QTimeZone> <QUrl> <QUuid> <QVariant>)

precompiled_headers(tessaly_core_headers LINK Qt6::Core HEADERS ${core_headers})
precompiled_headers(tessaly_qml_headers LINK Qt6::Qml
  HEADERS ${core_headers} <QtQml/qqml.h> <QtQml/qqmlprivate.h> <QQmlComponent> <QQmlEngine>)
precompiled_headers(tessaly_quick_headers LINK Qt6::Quick
  HEADERS ${core_headers} <QtQml/qqml.h> <QtQml/qqmlprivate.h> <QGuiApplication> <QQmlComponent> <QQmlEngine> <QQuickItem> <QQuickWindow>)

# use_precompiled(TARGET core|qml|quick): the target links what those headers belong to.
function(use_precompiled target kind)
  target_precompile_headers(${target} REUSE_FROM tessaly_${kind}_headers)
endfunction()
