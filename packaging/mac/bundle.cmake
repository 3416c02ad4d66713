# Makes a program the agent application Nimbletype.app. Installing it puts the libraries it uses in Contents/Frameworks,
# points the program at them there, and signs the bundle with NIMBLETYPE_SIGN_IDENTITY.
set(nimbletype_packaging ${CMAKE_CURRENT_LIST_DIR})
set(NIMBLETYPE_SIGN_IDENTITY "-" CACHE STRING "Who signs the installed bundle; - signs for this Mac alone")

function(nimbletype_bundle target)
  set_target_properties(${target} PROPERTIES
    MACOSX_BUNDLE ON
    MACOSX_BUNDLE_INFO_PLIST ${nimbletype_packaging}/Info.plist.in
    OUTPUT_NAME Nimbletype)
  install(TARGETS ${target} BUNDLE DESTINATION .)
  install(CODE "
    include(BundleUtilities)
    set(app \"\${CMAKE_INSTALL_PREFIX}/Nimbletype.app\")
    fixup_bundle(\"\${app}\" \"\" \"\")
    execute_process(COMMAND codesign --force --deep --options runtime
      --entitlements \"${nimbletype_packaging}/nimbletype.entitlements\"
      --sign \"${NIMBLETYPE_SIGN_IDENTITY}\" \"\${app}\" COMMAND_ERROR_IS_FATAL ANY)")
endfunction()
