# Optimized builds: checks that make a memory error harder to exploit, and no paths of the build machine in the program.
include(CheckCXXCompilerFlag)
include(CheckPIESupported)
check_pie_supported()

set(optimized "$<CONFIG:Release,RelWithDebInfo,MinSizeRel>")
foreach(flag -fPIE -fstack-protector-strong -fstack-clash-protection -fcf-protection)
  string(MAKE_C_IDENTIFIER "KAVENDRA_HAS${flag}" supported)
  check_cxx_compiler_flag(${flag} ${supported})
  if(${supported})
    target_compile_options(kavendra_options INTERFACE "$<${optimized}:${flag}>")
  endif()
endforeach()
# Undefined first, because some compilers define a lower level by themselves.
target_compile_options(kavendra_options INTERFACE
  "$<${optimized}:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=3>"
  "$<${optimized}:-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=;-ffile-prefix-map=${PROJECT_BINARY_DIR}/=>")
if(NOT APPLE)
  target_link_options(kavendra_options INTERFACE "$<${optimized}:-Wl,-z,relro,-z,now,--as-needed>")
endif()
