# Makes a program the agent application Nimbletype.app. Installing it puts the libraries it uses in Contents/Frameworks
# and Qt's plugins in Contents/PlugIns, points them at each other there, and signs the bundle with
# NIMBLETYPE_SIGN_IDENTITY.
set(nimbletype_packaging ${CMAKE_CURRENT_LIST_DIR})
set(NIMBLETYPE_SIGN_IDENTITY "-" CACHE STRING "Who signs the installed bundle; - signs for this Mac alone")

# Qt loads its plugins by name, so no library tells that they are needed. Nothing is installed from a check.
function(nimbletype_bundle_qt)
  if(NIMBLETYPE_MAC_CHECK)
    return()
  endif()
  install(FILES $<TARGET_FILE:Qt6::QCocoaIntegrationPlugin> DESTINATION Nimbletype.app/Contents/PlugIns/platforms)
  install(FILES $<TARGET_FILE:Qt6::QMacStylePlugin> DESTINATION Nimbletype.app/Contents/PlugIns/styles)
  install(FILES ${nimbletype_packaging}/qt.conf DESTINATION Nimbletype.app/Contents/Resources)
endfunction()

function(nimbletype_bundle target)
  set_target_properties(${target} PROPERTIES
    MACOSX_BUNDLE ON
    MACOSX_BUNDLE_INFO_PLIST ${nimbletype_packaging}/Info.plist.in
    OUTPUT_NAME Nimbletype)
  install(TARGETS ${target} BUNDLE DESTINATION .)
  nimbletype_bundle_qt()
  install(CODE "
    include(BundleUtilities)
    set(app \"\${CMAKE_INSTALL_PREFIX}/Nimbletype.app\")
    file(GLOB_RECURSE plugins \"\${app}/Contents/PlugIns/*.dylib\")
    fixup_bundle(\"\${app}\" \"\${plugins}\" \"${Qt6_DIR}/../..\")
    execute_process(COMMAND codesign --force --deep --options runtime
      --entitlements \"${nimbletype_packaging}/nimbletype.entitlements\"
      --sign \"${NIMBLETYPE_SIGN_IDENTITY}\" \"\${app}\" COMMAND_ERROR_IS_FATAL ANY)")
endfunction()
