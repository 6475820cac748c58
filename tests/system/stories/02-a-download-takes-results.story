# The driver is there. The technician makes a download, opens it, and readings come in over the first port.
$ mkdir -p Quorin && printf '[Settings]\nComPort=Com1\n' > settings.ini
$ printf 'NAME|INFFILE\nMoisture Meter|moisture.txt\n' > Quorin/drivers.txt
$ printf 'DRIVER|FILE|DATE|ALIAS\n' > Quorin/qrnctrl.txt
$ printf 'FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nStarted|1|||||TIME|starttime\nEnded|1|||||TIME|endtime\nMoisture|1||Moisture|13434828||||\nPlace|1|1|dv: Site|||||\nInstrument|0||dv: ORIGIN|||||\n' > Quorin/moisture.txt
$ quorin-console --strict
> choose Start...
{"done":"choose"}
> tick 100
{"done":"tick"}
> show
      Drivers
    --------------------------------------------------------------------------------
    > Moisture Meter
    --------------------------------------------------------------------------------
    [Ok]                                                                      [Back]
{"done":"show"}
> choose Ok
{"done":"choose"}
> choose New
{"done":"choose"}
> tick 100
{"done":"tick"}
> show
      Downloads
    --------------------------------------------------------------------------------
    > qrn0001.txt
    --------------------------------------------------------------------------------
    [File] Open | Delete | Rename | New                                       [Back]
{"done":"show"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tick 600
{"done":"tick"}
> show
      Bluetooth :-)                          1/1
    --------------------------------------------------------------------------------
    > Started
      Ended
      Moisture
      Place
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
# The instrument introduces itself and sends a result: two seconds later it is in the record.
> receive "[BLob]\r\n[CONNECT \"QI-0001\"]\r\n[/BLob]\r\n"
{"done":"receive"}
> tick 1000
{"event":"status","text":"Decoding Result"}
{"event":"status","text":null}
{"done":"tick"}
> receive "[BLob]\r\n[ORIGIN \"QI-0001\"]\r\n[DESCRIPTIVE_VAR \"Site=North wall\"]\r\n[RESULT_TYPE \"Moisture\" \"M1\"]\r\n[RESULT_VALUE \"23.4\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n"
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
      Started                                09:30
      Ended                                  09:30
    > Moisture                               23.4 %
      Place                                  North wall
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
# Another one for the same field: the program asks before it replaces the old value.
> receive "[BLob]\r\n[ORIGIN \"QI-0001\"]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"29.9\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n"
{"done":"receive"}
> tick 1100
{"event":"status","text":"Decoding Result"}
{"event":"box","text":"Replace: \r\n23.4 %\r\nWith:\r\n29.9 %?","buttons":"yesno","icon":"none","title":"Quorin"}
>> answer no
{"done":"answer"}
{"event":"tone","frequency":369,"duration":300}
{"event":"status","text":null}
{"done":"tick"}
> receive "[BLob]\r\n[ORIGIN \"QI-0001\"]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"24.1\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n"
{"done":"receive"}
> tick 1100
{"event":"status","text":"Decoding Result"}
{"event":"box","text":"Replace: \r\n23.4 %\r\nWith:\r\n24.1 %?","buttons":"yesno","icon":"none","title":"Quorin"}
>> answer yes
{"done":"answer"}
{"event":"tone","frequency":1046,"duration":250}
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"tick"}
# A reading of another instrument is dropped, and one without a field is answered by the low tone.
> receive "[BLob]\r\n[ORIGIN \"QI-0002\"]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"1\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n"
{"done":"receive"}
> tick 1100
{"event":"status","text":"Decoding Result"}
{"event":"status","text":null}
{"done":"tick"}
> receive "[BLob]\r\n[ORIGIN \"QI-0001\"]\r\n[RESULT_TYPE \"Colour\"]\r\n[RESULT_VALUE \"red\"]\r\n[RESULT_UNIT \"\"]\r\n[/BLob]\r\n"
{"done":"receive"}
> tick 1100
{"event":"status","text":"Decoding Result"}
{"event":"tone","frequency":369,"duration":300}
{"event":"status","text":null}
{"done":"tick"}
> tick 600
{"done":"tick"}
> show
      Bluetooth :-)                          1/1
    --------------------------------------------------------------------------------
      Started                                09:30
      Ended                                  09:30
    > Moisture                               24.1 %
      Place                                  North wall
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
# The next record copies the place.
> choose New Record
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tick 600
{"done":"tick"}
> show
      Bluetooth :-)                          2/2
    --------------------------------------------------------------------------------
      Started
      Ended
    > Moisture
      Place                                  North wall
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
> receive "[BLob]\r\n[ORIGIN \"QI-0001\"]\r\n[DESCRIPTIVE_VAR \"Site=Cellar\"]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"80\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n"
{"done":"receive"}
> tick 1100
{"event":"status","text":"Decoding Result"}
{"event":"tone","frequency":1046,"duration":250}
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"tick"}
> tick 60000
{"done":"tick"}
> choose Close
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tick 100
{"done":"tick"}
> show
      Downloads
    --------------------------------------------------------------------------------
    > qrn0001.txt
    --------------------------------------------------------------------------------
    [File] Open | Delete | Rename | New                                       [Back]
{"done":"show"}
$ cat Quorin/qrn0001.txt
Started|Ended|Moisture|Place|Instrument
09:30|09:30|24.1 %|North wall|QI-0001
09:30|09:30|80 %|Cellar|QI-0001
$ cat Quorin/qrnctrl.txt
DRIVER|FILE|DATE|ALIAS
Moisture Meter|qrn0001.txt|20070305|
$ ls Quorin
drivers.txt
moisture.txt
qrn0001.txt
qrnctrl.txt
