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
  ];
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
