-- What wixl cannot express, one statement for each line.

-- The old version goes as the first step of the change, so that both undo each other's steps if one fails.
UPDATE `InstallExecuteSequence` SET `Sequence` = 1501 WHERE `Action` = 'RemoveExistingProducts'

-- The maker's folder, which the system leaves otherwise: it removes only folders of files.
INSERT INTO `CreateFolder` (`Directory_`, `Component_`) VALUES ('MakersFolder', 'Registration')
INSERT INTO `InstallExecuteSequence` (`Action`, `Sequence`) VALUES ('RemoveFolders', 3600)
INSERT INTO `InstallExecuteSequence` (`Action`, `Sequence`) VALUES ('CreateFolders', 3700)

-- These pass from the caller to the installer's service.
UPDATE `Property` SET `Value` = 'LOADATSTARTUP;LOADEDATSTARTUP;WINDOWSMAJORVERSION;WIX_DOWNGRADE_DETECTED;WIX_UPGRADE_DETECTED' WHERE `Property` = 'SecureCustomProperties'

-- 64-bit (256), known by a registry entry (4), decided anew by each repair (64). What is there already holds unless the caller says otherwise.
UPDATE `Component` SET `Attributes` = 324, `Condition` = 'LOADATSTARTUP = "1" OR (NOT LOADATSTARTUP AND LOADEDATSTARTUP = "#1")' WHERE `Component` = 'LoadAtStartup'
UPDATE `Component` SET `Attributes` = 324, `Condition` = 'NOT (LOADATSTARTUP = "1" OR (NOT LOADATSTARTUP AND LOADEDATSTARTUP = "#1"))' WHERE `Component` = 'LoadOnDemand'
