# For NixOS and nix: nix-build -E 'with import <nixpkgs> { }; callPackage ./package.nix { }' in an unpacked release.
{
  lib,
  stdenv,
  cmake,
  gettext,
  glib,
  libplist,
  librsvg,
  libxcb,
  ninja,
  nlohmann_json,
  pkg-config,
  python3,
  qt6,
  systemdLibs,
  wayland,
  wayland-scanner,
}:

stdenv.mkDerivation {
  pname = "tessel";
  version = "0.1.0";
  src = lib.cleanSource ./..;

  nativeBuildInputs = [
    cmake
    gettext
    librsvg
    ninja
    pkg-config
    (python3.withPackages (packages: [ packages.pillow ]))
    qt6.qttools
    qt6.wrapQtAppsHook
    wayland-scanner
  ];
  buildInputs = [
    glib
    libplist
    libxcb
    nlohmann_json
    qt6.qtbase
    qt6.qtdeclarative
    qt6.qtsvg
    qt6.qtwayland
    systemdLibs
    wayland
  ];
  # It is loaded by its name.
  qtWrapperArgs = [ "--prefix LD_LIBRARY_PATH : ${lib.makeLibraryPath [ wayland ]}" ];
  cmakeBuildType = "MinSizeRel";
  cmakeFlags = [
    (lib.cmakeBool "CMAKE_UNITY_BUILD" true)
    (lib.cmakeBool "TESSEL_BUILD_TESTS" false)
    (lib.cmakeFeature "TESSEL_WEBSITE" "https://tessel.example")
  ];

  meta = {
    description = "Moves and resizes windows from the keyboard";
    homepage = "https://tessel.example";
    license = with lib.licenses; [
      gpl3Plus
      ofl
      cc0
      mit
    ];
    mainProgram = "tessel";
    platforms = lib.platforms.linux;
  };
}
