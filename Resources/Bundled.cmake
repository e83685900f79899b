# Resources that the interface's plugin contains: symbols, the icons of sample applications, and the font.
function(tessel_bundle_resources target)
    qt_add_resources(${target} symbols PREFIX /symbols BASE ${PROJECT_SOURCE_DIR}/Resources/symbols FILES
        ${PROJECT_SOURCE_DIR}/Resources/symbols/app.dashed.svg
        ${PROJECT_SOURCE_DIR}/Resources/symbols/arrow.down.circle.fill.svg
        ${PROJECT_SOURCE_DIR}/Resources/symbols/arrow.up.left.and.arrow.down.right.svg
        ${PROJECT_SOURCE_DIR}/Resources/symbols/checkmark.circle.fill.svg
        ${PROJECT_SOURCE_DIR}/Resources/symbols/checkmark.svg
        ${PROJECT_SOURCE_DIR}/Resources/symbols/chevron.up.chevron.down.svg
        ${PROJECT_SOURCE_DIR}/Resources/symbols/exclamationmark.triangle.fill.svg
        ${PROJECT_SOURCE_DIR}/Resources/symbols/eye.slash.fill.svg
        ${PROJECT_SOURCE_DIR}/Resources/symbols/hand.raised.fill.svg
        ${PROJECT_SOURCE_DIR}/Resources/symbols/keyboard.svg
        ${PROJECT_SOURCE_DIR}/Resources/symbols/lock.shield.fill.svg
        ${PROJECT_SOURCE_DIR}/Resources/symbols/macwindow.badge.plus.svg
        ${PROJECT_SOURCE_DIR}/Resources/symbols/macwindow.svg
        ${PROJECT_SOURCE_DIR}/Resources/symbols/magnifyingglass.svg
        ${PROJECT_SOURCE_DIR}/Resources/symbols/minus.circle.svg
        ${PROJECT_SOURCE_DIR}/Resources/symbols/network.slash.svg
        ${PROJECT_SOURCE_DIR}/Resources/symbols/plus.svg
        ${PROJECT_SOURCE_DIR}/Resources/symbols/power.svg
        ${PROJECT_SOURCE_DIR}/Resources/symbols/rectangle.center.inset.filled.svg
        ${PROJECT_SOURCE_DIR}/Resources/symbols/rectangle.expand.vertical.svg
        ${PROJECT_SOURCE_DIR}/Resources/symbols/rectangle.inset.filled.svg
        ${PROJECT_SOURCE_DIR}/Resources/symbols/rectangle.lefthalf.filled.svg
        ${PROJECT_SOURCE_DIR}/Resources/symbols/rectangle.righthalf.filled.svg
        ${PROJECT_SOURCE_DIR}/Resources/symbols/rectangle.split.2x1.svg
        ${PROJECT_SOURCE_DIR}/Resources/symbols/uiwindow.split.2x1.svg
        ${PROJECT_SOURCE_DIR}/Resources/symbols/xmark.circle.fill.svg)
    qt_add_resources(${target} preview PREFIX /preview BASE ${PROJECT_SOURCE_DIR}/Resources/preview FILES
        ${PROJECT_SOURCE_DIR}/Resources/preview/calculator.svg
        ${PROJECT_SOURCE_DIR}/Resources/preview/calendar.svg
        ${PROJECT_SOURCE_DIR}/Resources/preview/mail.svg
        ${PROJECT_SOURCE_DIR}/Resources/preview/maps.svg
        ${PROJECT_SOURCE_DIR}/Resources/preview/music.svg
        ${PROJECT_SOURCE_DIR}/Resources/preview/notes.svg
        ${PROJECT_SOURCE_DIR}/Resources/preview/settings.svg
        ${PROJECT_SOURCE_DIR}/Resources/preview/store.svg
        ${PROJECT_SOURCE_DIR}/Resources/preview/terminal.svg)
    qt_add_resources(${target} fonts PREFIX /fonts BASE ${PROJECT_SOURCE_DIR}/Resources/fonts FILES
        ${PROJECT_SOURCE_DIR}/Resources/fonts/TesselUI-Medium.otf
        ${PROJECT_SOURCE_DIR}/Resources/fonts/TesselUI-Regular.otf
        ${PROJECT_SOURCE_DIR}/Resources/fonts/TesselUI-SemiBold.otf)
endfunction()
