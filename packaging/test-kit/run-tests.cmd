@echo off
rem Tests Sumwright on this computer. Double-click this file; READ-ME.txt says more.
setlocal
title Sumwright test kit

set "width=32"
if /i "%PROCESSOR_ARCHITECTURE%"=="AMD64" set "width=64"
if /i "%PROCESSOR_ARCHITEW6432%"=="AMD64" set "width=64"
set "runner=%~dp0tests\%width%\kit_runner.exe"

if not exist "%runner%" (
  echo Some files of the test kit are missing here.
  echo Please unpack the whole zip file into a folder first, and start run-tests.cmd there.
  echo.
  pause
  exit /b 2
)

"%runner%" %*
set "result=%errorlevel%"
if %result% leq 2 if %result% geq 0 exit /b %result%

echo.
echo The tests ended early (code %result%).
echo A security product may have stopped kit_runner.exe; look for its message.
echo Start run-tests.cmd again: it first restores what may have been left changed.
echo.
if /i not "%~1"=="/yes" pause
exit /b 2
