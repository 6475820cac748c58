# A Palm OS device with no card. Its memory, "Device:\", contains line databases and no files, so the program keeps all
# its data in databases. A driver package came by beam as one; a database's name has no ending, hence "soilqvd".
$ mkdir Databases && sqlite3 Databases/soilqvd.sqlite "CREATE TABLE \"DATABASE\" (TypeCode, CreatorCode); INSERT INTO \"DATABASE\" VALUES (0x54455854, 0x5156524E); CREATE TABLE TEXT (Position INTEGER PRIMARY KEY, LineNumber, LineData)"
$ sqlite3 Databases/soilqvd.sqlite "INSERT INTO TEXT VALUES (0,1,'Soil Meter|soil.txt'), (1,2,'FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA'), (2,3,'Plot|1|1|dv: Plot||||'), (3,4,'Acid|1||pH||||')"
$ for n in 1 2 3 4 5 6 7 8; do sqlite3 Databases/soilqvd.sqlite "INSERT INTO TEXT VALUES ($n+3,$n+4,'Note $n|1||||||')"; done

# At its start the program takes over the hardware keys.
$ quorin-console --device palm --strict
{"event":"grab","key":308}
{"event":"grab","key":309}
{"event":"grab","key":516}
{"event":"grab","key":517}
{"event":"grab","key":518}
{"event":"grab","key":519}
{"event":"grab","key":33}
{"event":"grab","key":34}
{"event":"grab","key":276}
{"event":"grab","key":520}
{"event":"grab","key":264}
{"event":"grab","key":266}
{"event":"grab","key":267}
{"event":"grab","key":1280}
{"event":"grab","key":261}
# Both menus are soft keys. A key with several commands opens their list; one with a single command runs it.
> title 1
{"done":"title"}
> show
                                         Velmor
                                        Tallybook
    
                                         V 0.27
    --------------------------------------------------------------------------------
    [Main] Start... | Exit
                       [Options] Preferences... | inf editor... | Bluetooth Debug...
{"done":"show"}
> choose Preferences...
{"done":"choose"}
> tap 2
{"done":"tap"}
> tap 1
{"done":"tap"}
> title 1
{"done":"title"}
> choose inf editor...
{"done":"choose"}
> choose Add Driver...
{"done":"choose"}
> tick 100
{"done":"tick"}
> show
      Add Driver
    --------------------------------------------------------------------------------
    > Device:\soilqvd
    --------------------------------------------------------------------------------
    [Install...]                                                              [Back]
{"done":"show"}
> title 1
{"event":"status","text":"Busy"}
{"event":"box","text":"Driver installed","buttons":"ok","icon":"none","title":"Quorin"}
>> answer ok
{"done":"answer"}
{"event":"status","text":null}
{"done":"title"}
> title 2
{"done":"title"}
> choose Back
{"done":"choose"}
> choose Start...
{"done":"choose"}
> title 1
{"done":"title"}
> choose New
{"done":"choose"}
# The select key opens the download. Its port is that of the device's Bluetooth library, named by a number.
> key 310
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"key"}
> tick 600
{"done":"tick"}
> receive "[BLob]\r\n[DESCRIPTIVE_VAR \"Plot=A1\"]\r\n[RESULT_TYPE \"pH\"]\r\n[RESULT_VALUE \"6.8\"]\r\n[RESULT_UNIT \"\"]\r\n[/BLob]\r\n"
{"done":"receive"}
> tick 1100
{"event":"status","text":"Decoding Result"}
{"event":"tone","frequency":1046,"duration":250}
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"tick"}
> show
      Bluetooth :-)                          1/1
    --------------------------------------------------------------------------------
      ... 1 row above
    > Acid                                   6.8
      Note 1
      Note 2
      Note 3
      Note 4
      Note 5
      Note 6
      Note 7
      Note 8
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
# The power key: the reading is saved and the link is closed before the device may sleep, then the key is taken over again.
> key 276
{"event":"release","key":276}
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"event":"send","character":276}
{"event":"grab","key":276}
{"done":"key"}
> tick 100
{"done":"tick"}
> show
      Downloads
    --------------------------------------------------------------------------------
    > qrn0001.txt
    --------------------------------------------------------------------------------
    [File] Open | Delete | Rename | New                                       [Back]
{"done":"show"}
# The end releases no key: a key belongs to the program only while it runs.
> choose Back
{"done":"choose"}
> choose Back
{"done":"choose"}
> choose Exit
{"event":"end"}
{"done":"choose"}
$ find * | LC_ALL=C sort; cat settings.ini
Databases
Databases/drivers.sqlite
Databases/qrn0001.sqlite
Databases/qrnctrl.sqlite
Databases/soil.sqlite
Databases/soilqvd.sqlite
Device
settings.ini
[Settings]
StorageVolume=Device:\
ComPort=1919312750
$ for d in drivers qrnctrl qrn0001; do sqlite3 Databases/$d.sqlite 'SELECT LineNumber, LineData FROM TEXT ORDER BY Position'; done
1|NAME|INFFILE
2|Soil Meter|soil.txt
1|DRIVER|FILE|DATE|ALIAS
2|Soil Meter|qrn0001.txt|20070305|
1|Plot|Acid|Note 1|Note 2|Note 3|Note 4|Note 5|Note 6|Note 7|Note 8
2|A1|6.8 ||||||||
$ sqlite3 Databases/qrn0001.sqlite "SELECT printf('%08X %08X', TypeCode, CreatorCode) FROM \"DATABASE\""
54455854 5156524E

# The next day, without the instrument: the technician goes through the records and edits them with the device's keys.
$ sed -i 's/^ComPort=.*/ComPort=OFF/' settings.ini
$ quorin-console --device palm --strict
{"event":"grab","key":308}
{"event":"grab","key":309}
{"event":"grab","key":516}
{"event":"grab","key":517}
{"event":"grab","key":518}
{"event":"grab","key":519}
{"event":"grab","key":33}
{"event":"grab","key":34}
{"event":"grab","key":276}
{"event":"grab","key":520}
{"event":"grab","key":264}
{"event":"grab","key":266}
{"event":"grab","key":267}
{"event":"grab","key":1280}
{"event":"grab","key":261}
> choose Start...
{"done":"choose"}
> key 310
{"done":"key"}
> key 310
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"key"}
> tick 100
{"done":"tick"}
> choose New Record
{"done":"choose"}
> tick 100
{"done":"tick"}
# The page keys turn the page, and select its first row. They do so on the last page too, where they also close an open
# field.
> key 34
{"done":"key"}
> show
      Download                               2/2
    --------------------------------------------------------------------------------
      ... 2 rows above
    > Note 1
      Note 2
      Note 3
      Note 4
      Note 5
      Note 6
      Note 7
      Note 8
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
> tap 3 1
{"done":"tap"}
> set dry
{"done":"set"}
> key 34
{"done":"key"}
> show
      Download                               2/2
    --------------------------------------------------------------------------------
      ... 2 rows above
    > Note 1
      Note 2                                 dry
      Note 3
      Note 4
      Note 5
      Note 6
      Note 7
      Note 8
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
# Left and right go to the previous and next record; the present one is saved first.
> key 308
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"key"}
> tick 100
{"done":"tick"}
> show
      Download                               1/2
    --------------------------------------------------------------------------------
      Plot                                   A1
      Acid                                   6.8
    > Note 1
      Note 2
      Note 3
      Note 4
      Note 5
      Note 6
      Note 7
      ... 1 row below
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
> key 309
{"done":"key"}
> tick 100
{"done":"tick"}
> show
      Download                               2/2
    --------------------------------------------------------------------------------
      Plot                                   A1
      Acid
    > Note 1
      Note 2                                 dry
      Note 3
      Note 4
      Note 5
      Note 6
      Note 7
      ... 1 row below
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
# The key of another application: the record is left, which saves what was typed, and the device gets the key.
> tap 9 1
{"done":"tap"}
> set rain
{"done":"set"}
> key 516
{"event":"release","key":516}
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"event":"send","character":516}
{"event":"grab","key":516}
{"done":"key"}
> tick 100
{"done":"tick"}
> show
      Downloads
    --------------------------------------------------------------------------------
    > qrn0001.txt
    --------------------------------------------------------------------------------
    [File] Open | Delete | Rename | New                                       [Back]
{"done":"show"}
$ sqlite3 Databases/qrn0001.sqlite 'SELECT LineNumber, LineData FROM TEXT ORDER BY Position'
1|Plot|Acid|Note 1|Note 2|Note 3|Note 4|Note 5|Note 6|Note 7|Note 8
2|A1|6.8 ||||||||
3|A1|||dry||||||rain
