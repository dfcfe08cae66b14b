@echo off
rem Runs the tests of this kit; the last line is "N passed, N failed". README.txt says what it needs.
setlocal
set pause=
if not "%~1"=="--pause" goto run
set pause=1
shift

:run
"%~dp0tests\run_tests.exe" %1 %2
set result=%errorlevel%
if defined pause pause
if defined pause exit /b %result%
if not "%result%"=="5" exit /b %result%

rem Not elevated: asks for it, and goes on in a window of its own.
set script=%~f0
powershell -NoProfile -Command "Start-Process -Verb RunAs -FilePath $env:script -ArgumentList '--pause'"
exit /b %result%
