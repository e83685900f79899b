pragma Singleton
import QtQuick

// The brand in the environment, or a plain one until there is one.
QtObject {
    property AppBrand usual: AppBrand {}
    readonly property AppBrand current: Environment.appBrand ?? usual
}
