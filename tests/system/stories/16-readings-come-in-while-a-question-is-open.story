# Readings that come in while a question is open: what becomes of them depends on how soon it is answered.
$ mkdir -p Quorin && printf '[Settings]\nComPort=Com1\n' > settings.ini
$ printf 'NAME|INFFILE\nMoisture Meter|moisture.txt\n' > Quorin/drivers.txt
$ printf 'DRIVER|FILE|DATE|ALIAS\nMoisture Meter|qrn0001.txt|20070301|\n' > Quorin/qrnctrl.txt
$ printf 'FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nMoisture|1||Moisture|||||\nHumidity|1||Humidity|||||\n' > Quorin/moisture.txt
$ quorin-console --strict
> choose Start...
{"done":"choose"}
> choose Ok
{"done":"choose"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tick 500
{"done":"tick"}
> receive "[BLob]\r\n[CONNECT \"QI-0001\"]\r\n[/BLob]\r\n"
{"done":"receive"}
> tick 1100
{"event":"status","text":"Decoding Result"}
{"event":"status","text":null}
{"done":"tick"}
> receive "[BLob]\r\n[ORIGIN \"QI-0001\"]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"1\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n"
{"done":"receive"}
> tick 1100
{"event":"status","text":"Decoding Result"}
{"event":"tone","frequency":1046,"duration":250}
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"tick"}
# A second value for the field opens a question, which is answered at once: what came meanwhile is removed with the
# text that the question was about, and the value for the other field is lost.
> receive "[BLob]\r\n[ORIGIN \"QI-0001\"]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"2\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n"
{"done":"receive"}
> tick 1100
{"event":"status","text":"Decoding Result"}
{"event":"box","text":"Replace: \r\n1 %\r\nWith:\r\n2 %?","buttons":"yesno","icon":"none","title":"Quorin"}
>> receive "[BLob]\r\n[ORIGIN \"QI-0001\"]\r\n[RESULT_TYPE \"Humidity\"]\r\n[RESULT_VALUE \"50\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n"
{"done":"receive"}
>> answer yes
{"done":"answer"}
{"event":"tone","frequency":1046,"duration":250}
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"event":"status","text":"Decoding Result"}
{"event":"status","text":null}
{"done":"tick"}
> tick 1100
{"done":"tick"}
> show
      Bluetooth :-)                          1/1
    --------------------------------------------------------------------------------
    > Moisture                               2 %
      Humidity
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
# The same, but the question is open for more than a second. The text is decoded again with what has come: the question
# opens a second time, above the first one, and the value for the other field is taken.
> receive "[BLob]\r\n[ORIGIN \"QI-0001\"]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"3\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n"
{"done":"receive"}
> tick 1100
{"event":"status","text":"Decoding Result"}
{"event":"box","text":"Replace: \r\n2 %\r\nWith:\r\n3 %?","buttons":"yesno","icon":"none","title":"Quorin"}
>> receive "[BLob]\r\n[ORIGIN \"QI-0001\"]\r\n[RESULT_TYPE \"Humidity\"]\r\n[RESULT_VALUE \"60\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n"
{"done":"receive"}
>> tick 1100
{"event":"status","text":"Decoding Result"}
{"event":"box","text":"Replace: \r\n2 %\r\nWith:\r\n3 %?","buttons":"yesno","icon":"none","title":"Quorin"}
>>> show
      Bluetooth :-)                          1/1
    ----------------------------+- the newer of two --+-----------------------------
    > Moisture                  | Replace:            |
      Humidity                  | 2 %                 |
    ** Decoding Result **       | With:               |
                                | 3 %?                |
                                |                     |
                                |  [ Yes ]   [ No ]   |
                                +---------------------+
    
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
>>> answer yes
{"done":"answer"}
{"event":"tone","frequency":1046,"duration":250}
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"event":"tone","frequency":1046,"duration":250}
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"tick"}
>> show
      Bluetooth :-)                          1/1
    ------------------------------+------------------+------------------------------
      Moisture                    | Replace:         |
    > Humidity                    | 2 %              |
                                  | With:            |
                                  | 3 %?             |
                                  |                  |
                                  | [ Yes ]   [ No ] |
                                  +------------------+
    
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
>> answer yes
{"done":"answer"}
{"event":"tone","frequency":1046,"duration":250}
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"tick"}
> tick 1100
{"done":"tick"}
> show
      Bluetooth :-)                          1/1
    --------------------------------------------------------------------------------
    > Moisture                               3 %
      Humidity                               60 %
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
# An open field gets every reading, also one that belongs to another field.
> tap 1 1
{"done":"tap"}
> tick 100
{"done":"tick"}
> receive "[BLob]\r\n[ORIGIN \"QI-0001\"]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"4\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n"
{"done":"receive"}
> tick 1100
{"event":"status","text":"Decoding Result"}
{"event":"tone","frequency":369,"duration":300}
{"event":"status","text":null}
{"done":"tick"}
> key 13
{"done":"key"}
> show
      Bluetooth :-)                          1/1
    --------------------------------------------------------------------------------
      Moisture                               3 %
    > Humidity                               4 %
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
# What was taken is in the file.
> choose Close
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> quit
{"done":"quit"}
$ cat Quorin/qrn0001.txt
Moisture|Humidity
3 %|4 %
